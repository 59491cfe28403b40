#include <gmock/gmock.h>

#include "intents/BrevinAppShortcuts.h"
#include "intents/CollectionEntityQuery.h"
#include "intents/CopyLatestClipIntent.h"
#include "intents/PasteFromCollectionIntent.h"
#include "intents/SearchHistoryIntent.h"
#include "intents/ToggleCaptureIntent.h"
#include "unit/intents/IntentFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using Reply = AuthenticationReply::Outcome;
using Error = BrevinIntentError;

TEST(BrevinIntentError, SaysWhatWentWrong) {
  EXPECT_EQ(localizedDescription(Error::unavailable), u"Nimbrel no está disponible.");
  EXPECT_EQ(localizedDescription(Error::emptyHistory), u"No hay texto seguro en el historial.");
  EXPECT_EQ(localizedDescription(Error::emptyCollection), u"La colección no contiene texto seguro.");
  EXPECT_EQ(localizedDescription(Error::authenticationFailed), u"No se pudo desbloquear Brevin.");
  EXPECT_EQ(localizedDescription(Error::accessibilityRequired),
            u"Concede permiso de Accesibilidad para pegar automáticamente.");
}

TEST(BrevinIntentError, IsKnownByNumberAndName) {
  EXPECT_EQ(static_cast<int>(Error::emptyHistory), 1);
  EXPECT_EQ(static_cast<int>(Error::accessibilityRequired), 4);
  for (const Error error : kBrevinIntentErrors)
    EXPECT_EQ(brevinIntentErrorNamed(name(error)), error);
  EXPECT_EQ(brevinIntentErrorNamed(u"EmptyHistory"_s), std::nullopt);
  EXPECT_EQ(brevinIntentErrorNamed({}), std::nullopt);
}

TEST(BrevinAppShortcuts, OffersTheFourInTheirOrder) {
  const auto shortcuts = BrevinAppShortcuts::appShortcuts(u"Nimbrel"_s);
  const QList<AppShortcut> expected{
      {Intent::copyLatestClip, u"Copiar lo último en Nimbrel"_s, u"Copiar último"_s, u"doc.on.clipboard"_s},
      {Intent::searchHistory, u"Buscar historial en Nimbrel"_s, u"Buscar historial"_s, u"magnifyingglass"_s},
      {Intent::toggleCapture, u"Pausar o reanudar captura en Nimbrel"_s, u"Pausar captura"_s,
       u"pause.circle"_s},
      {Intent::pasteFromCollection, u"Pegar desde colección en Nimbrel"_s, u"Pegar colección"_s,
       u"rectangle.on.clipboard"_s}};
  EXPECT_EQ(shortcuts, expected);
}

class CopyLatestClipIntentTest : public testing::IntentFixture {
 protected:
  void perform() { CopyLatestClipIntent(&services).perform(outcome.taker()); }
  Outcome<QString> outcome;
};

TEST_F(CopyLatestClipIntentTest, HasATitle) {
  EXPECT_EQ(CopyLatestClipIntent::title(), u"Copiar último texto");
}

TEST_F(CopyLatestClipIntentTest, CopiesTheLatestTextThatIsNoSecret) {
  copyText(u"viejo"_s);
  copyText(u"bueno"_s);
  copyFile(u"/etc/hostname"_s);
  copyImage("png"_ba);
  copySecret(u"secreto"_s);
  perform();
  EXPECT_EQ(outcome.value(), u"Último texto copiado.");
  EXPECT_EQ(pasteboard.text, u"bueno"_s);
}

TEST_F(CopyLatestClipIntentTest, TakesACopyThatItMadeForNoNewClip) {
  copyText(u"a"_s);
  copyText(u"b"_s);
  copySecret(u"secreto"_s);
  perform();
  store().tick();
  EXPECT_EQ(texts(), (QStringList{u"secreto"_s, u"b"_s, u"a"_s}));
}

TEST_F(CopyLatestClipIntentTest, ACodeIsASecretToo) {
  grader.grades.insert(u"482913"_s, SensitivityLevel::soft);
  copyText(u"482913"_s);
  ASSERT_EQ(texts().size(), 1);
  perform();
  EXPECT_EQ(outcome.error(), Error::emptyHistory);
}

TEST_F(CopyLatestClipIntentTest, WithOnlySecretsFailsAndLeavesThePasteboardAlone) {
  copySecret(u"secreto"_s);
  perform();
  EXPECT_EQ(outcome.error(), Error::emptyHistory);
  EXPECT_EQ(pasteboard.text, u"secreto"_s);
  EXPECT_TRUE(pasteboard.writes.isEmpty());
}

TEST_F(CopyLatestClipIntentTest, FailsWithAnEmptyHistory) {
  perform();
  EXPECT_EQ(outcome.error(), Error::emptyHistory);
}

TEST_F(CopyLatestClipIntentTest, FailsWhenNothingCanBeWritten) {
  copyText(u"a"_s);
  pasteboard.failWrites = true;
  perform();
  EXPECT_EQ(outcome.error(), Error::emptyHistory);
}

TEST_F(CopyLatestClipIntentTest, FailsBeforeThereIsAHistory) {
  CopyLatestClipIntent(nullptr).perform(outcome.taker());
  EXPECT_EQ(outcome.error(), Error::unavailable);
}

TEST_F(CopyLatestClipIntentTest, WithTheLockOnAsksFirst) {
  settings.lockMode = LockMode::sensitiveOnly;
  copyText(u"antes"_s);
  perform();
  EXPECT_EQ(authenticator.asked, QStringList{u"ver el historial del portapapeles"_s});
  EXPECT_FALSE(outcome.result.has_value());
  // What is copied while the user types the password is the latest then.
  copyText(u"mientras"_s);
  pasteboard.writes.clear();
  authenticator.reply(Reply::proven);
  EXPECT_EQ(outcome.value(), u"Último texto copiado.");
  EXPECT_EQ(pasteboard.writes.last().text, u"mientras"_s);
}

TEST_F(CopyLatestClipIntentTest, WithTheLockOnAndNoProofCopiesNothing) {
  settings.lockMode = LockMode::sensitiveOnly;
  copyText(u"a"_s);
  perform();
  authenticator.reply(Reply::refused);
  EXPECT_EQ(outcome.error(), Error::authenticationFailed);
  EXPECT_TRUE(pasteboard.writes.isEmpty());
}

TEST_F(CopyLatestClipIntentTest, WithTheLockOnFailsWhereNobodyCanBeAsked) {
  settings.lockMode = LockMode::sensitiveOnly;
  authenticator.obstacle = u"no hay agente"_s;
  copyText(u"a"_s);
  perform();
  EXPECT_EQ(outcome.error(), Error::authenticationFailed);
}

TEST_F(CopyLatestClipIntentTest, WithTheLockOnIsRefusedWhileAnotherAsks) {
  settings.lockMode = LockMode::sensitiveOnly;
  copyText(u"a"_s);
  Outcome<QString> other;
  CopyLatestClipIntent(&services).perform(other.taker());
  perform();
  EXPECT_EQ(outcome.error(), Error::authenticationFailed);
  EXPECT_EQ(authenticator.asked.size(), 1);
}

TEST_F(CopyLatestClipIntentTest, WithTheLockOffAsksNobody) {
  copyText(u"a"_s);
  perform();
  EXPECT_TRUE(authenticator.asked.isEmpty());
}

class SearchHistoryIntentTest : public testing::IntentFixture {
 protected:
  void perform(const QString& text) { SearchHistoryIntent(&services).perform(text, outcome.taker()); }
  Outcome<SearchHistoryIntent::Found> outcome;
};

TEST_F(SearchHistoryIntentTest, DescribesItself) {
  EXPECT_EQ(SearchHistoryIntent::title(), u"Buscar historial");
  EXPECT_EQ(SearchHistoryIntent::parameterDescription(), u"Texto que quieres buscar en el historial.");
  EXPECT_EQ(SearchHistoryIntent::parameterSummary(u"pan"_s), u"Buscar pan en el historial");
}

TEST_F(SearchHistoryIntentTest, GivesTheTextsInTheirOrder) {
  copyText(u"pan de molde"_s);
  copyText(u"leche"_s);
  copyText(u"Pan integral"_s);
  perform(u"pán"_s);
  EXPECT_EQ(outcome.value().texts, (QStringList{u"Pan integral"_s, u"pan de molde"_s}));
  EXPECT_EQ(outcome.value().dialog, u"Se encontraron 2 textos.");
}

TEST_F(SearchHistoryIntentTest, WithoutAMatchFindsNone) {
  copyText(u"leche"_s);
  perform(u"pan"_s);
  EXPECT_TRUE(outcome.value().texts.isEmpty());
  EXPECT_EQ(outcome.value().dialog, u"Se encontraron 0 textos.");
}

TEST_F(SearchHistoryIntentTest, GivesTwentyAtMost) {
  for (int i = 0; i < 25; ++i)
    copyText(u"pan %1"_s.arg(i));
  perform(u"pan"_s);
  EXPECT_EQ(outcome.value().texts.size(), 20);
  EXPECT_EQ(outcome.value().texts.first(), u"pan 24"_s);
  EXPECT_EQ(outcome.value().dialog, u"Se encontraron 20 textos.");
}

TEST_F(SearchHistoryIntentTest, GivesNoSecretsWhateverIsLookedFor) {
  copyText(u"pan"_s);
  copySecret(u"panadero secreto"_s);
  for (const QString& text : {u"pan"_s, u""_s, u" "_s, u"p"_s, u"a"_s}) {
    outcome.result.reset();
    perform(text);
    EXPECT_EQ(outcome.value().texts, QStringList{u"pan"_s}) << qPrintable(text);
  }
}

TEST_F(SearchHistoryIntentTest, LeavesOutWhatTheRowsOfFilesAndPicturesHold) {
  copyFile(u"/tmp/pan.txt"_s);
  perform(u"pan"_s);
  EXPECT_TRUE(outcome.value().texts.isEmpty());
}

TEST_F(SearchHistoryIntentTest, DoesNotGiveWhatHasGoneMeanwhile) {
  copyText(u"pan"_s);
  perform(u"pan"_s);
  store().clearHistory();
  EXPECT_TRUE(outcome.value().texts.isEmpty());
}

TEST_F(SearchHistoryIntentTest, DoesNotGiveWhatHasBecomeASecretMeanwhile) {
  copyImage("png"_ba);
  copyText(u"pan"_s);
  perform(u"pan"_s);
  // The same text is copied again, and found to be a secret now.
  copySecret(u"pan"_s);
  ASSERT_TRUE(clip(0).isSensitive());
  EXPECT_TRUE(outcome.value().texts.isEmpty());
}

TEST_F(SearchHistoryIntentTest, TheLockSwitchedOnMeanwhileHolds) {
  copyText(u"pan"_s);
  perform(u"pan"_s);
  settings.lockMode = LockMode::sensitiveOnly;
  ASSERT_TRUE(QTest::qWaitFor([this] { return outcome.result.has_value(); }));
  EXPECT_EQ(outcome.error(), Error::authenticationFailed);
}

TEST_F(SearchHistoryIntentTest, AnswersEachWhoAsks) {
  copyText(u"pan"_s);
  copyText(u"leche"_s);
  Outcome<SearchHistoryIntent::Found> other;
  SearchHistoryIntent(&services).perform(u"leche"_s, other.taker());
  perform(u"pan"_s);
  EXPECT_EQ(other.value().texts, QStringList{u"leche"_s});
  EXPECT_EQ(outcome.value().texts, QStringList{u"pan"_s});
}

TEST_F(SearchHistoryIntentTest, FailsBeforeThereIsAHistory) {
  SearchHistoryIntent(nullptr).perform(u"pan"_s, outcome.taker());
  EXPECT_EQ(outcome.error(), Error::unavailable);
}

TEST_F(SearchHistoryIntentTest, WithTheLockOnLooksOnlyWithAProof) {
  settings.lockMode = LockMode::sensitiveOnly;
  copyText(u"pan"_s);
  perform(u"pan"_s);
  authenticator.reply(Reply::refused);
  EXPECT_EQ(outcome.error(), Error::authenticationFailed);
  clock.advance(std::chrono::seconds(1));
  perform(u"pan"_s);
  outcome.result.reset();
  authenticator.reply(Reply::proven);
  EXPECT_EQ(outcome.value().texts, QStringList{u"pan"_s});
  // The proof holds for the next.
  outcome.result.reset();
  perform(u"pan"_s);
  EXPECT_EQ(outcome.value().texts, QStringList{u"pan"_s});
  EXPECT_EQ(authenticator.asked.size(), 2);
}

class ToggleCaptureIntentTest : public testing::IntentFixture {};

TEST_F(ToggleCaptureIntentTest, TwicePausesAndResumes) {
  EXPECT_EQ(ToggleCaptureIntent::title(), u"Pausar o reanudar captura");
  const auto first = std::get<ToggleCaptureIntent::Toggled>(ToggleCaptureIntent(&services).perform());
  EXPECT_EQ(first.dialog, u"Captura pausada.");
  EXPECT_TRUE(first.paused);
  EXPECT_TRUE(store().isPaused());
  const auto second = std::get<ToggleCaptureIntent::Toggled>(ToggleCaptureIntent(&services).perform());
  EXPECT_EQ(second.dialog, u"Captura reanudada.");
  EXPECT_FALSE(second.paused);
  EXPECT_FALSE(store().isPaused());
}

TEST_F(ToggleCaptureIntentTest, NeverAsksForAProof) {
  settings.lockMode = LockMode::sensitiveOnly;
  EXPECT_EQ(std::get<ToggleCaptureIntent::Toggled>(ToggleCaptureIntent(&services).perform()).dialog,
            u"Captura pausada.");
  EXPECT_TRUE(authenticator.asked.isEmpty());
}

TEST_F(ToggleCaptureIntentTest, FailsBeforeThereIsAHistory) {
  EXPECT_EQ(std::get<Error>(ToggleCaptureIntent(nullptr).perform()), Error::unavailable);
}

class PasteFromCollectionIntentTest : public testing::IntentFixture {
 protected:
  PasteFromCollectionIntentTest() {
    copyText(u"viejo"_s);
    copyText(u"nuevo"_s);
    copyText(u"otro"_s);
    collect(2, u"trabajo"_s);
    collect(1, u"trabajo"_s);
    collect(0, u"casa"_s);
  }
  void perform(const QString& collection) {
    PasteFromCollectionIntent(&services).perform({collection}, outcome.taker());
  }
  Outcome<PasteFromCollectionIntent::Pasted> outcome;
};

TEST_F(PasteFromCollectionIntentTest, DescribesItself) {
  EXPECT_EQ(PasteFromCollectionIntent::title(), u"Pegar desde colección");
  EXPECT_EQ(PasteFromCollectionIntent::parameterDescription(), u"Colección desde la que quieres pegar.");
  EXPECT_EQ(PasteFromCollectionIntent::parameterSummary({u"casa"_s}), u"Pegar desde casa");
}

TEST_F(PasteFromCollectionIntentTest, PastesTheLatestTextOfTheCollection) {
  perform(u"trabajo"_s);
  outcome.value();
  EXPECT_EQ(pasted, QStringList{u"nuevo"_s});
}

TEST_F(PasteFromCollectionIntentTest, PassesSecretsOver) {
  copySecret(u"secreto"_s);
  collect(0, u"trabajo"_s);
  perform(u"trabajo"_s);
  EXPECT_EQ(pasted, QStringList{u"nuevo"_s});
}

TEST_F(PasteFromCollectionIntentTest, FailsWithoutASecureText) {
  copySecret(u"secreto"_s);
  collect(0, u"claves"_s);
  for (const QString& name : {u"claves"_s, u"ninguna"_s, u"Trabajo"_s, u""_s}) {
    outcome.result.reset();
    perform(name);
    EXPECT_EQ(outcome.error(), Error::emptyCollection) << qPrintable(name);
  }
  EXPECT_TRUE(pasted.isEmpty());
}

TEST_F(PasteFromCollectionIntentTest, WithoutTrustFailsBeforeAnythingIsPasted) {
  trust.trusted = false;
  perform(u"trabajo"_s);
  EXPECT_EQ(outcome.error(), Error::accessibilityRequired);
  EXPECT_TRUE(pasted.isEmpty());
  EXPECT_EQ(trust.requests, 1);
  // Whatever is in the collection.
  perform(u"ninguna"_s);
  EXPECT_EQ(outcome.error(), Error::accessibilityRequired);
}

TEST_F(PasteFromCollectionIntentTest, WithTheLockOnTheProofComesBeforeEverything) {
  settings.lockMode = LockMode::sensitiveOnly;
  trust.trusted = false;
  perform(u"trabajo"_s);
  EXPECT_EQ(trust.requests, 0);
  authenticator.reply(Reply::proven);
  EXPECT_EQ(outcome.error(), Error::accessibilityRequired);
}

TEST_F(PasteFromCollectionIntentTest, TellsWhyItCouldNotPaste) {
  pasteFailure = Error::emptyHistory;
  perform(u"trabajo"_s);
  EXPECT_EQ(outcome.error(), Error::emptyHistory);
}

TEST_F(PasteFromCollectionIntentTest, WithTheLockOnPastesOnlyWithAProof) {
  settings.lockMode = LockMode::sensitiveOnly;
  perform(u"trabajo"_s);
  EXPECT_TRUE(pasted.isEmpty());
  authenticator.reply(Reply::refused);
  EXPECT_EQ(outcome.error(), Error::authenticationFailed);
  clock.advance(std::chrono::seconds(1));
  perform(u"trabajo"_s);
  authenticator.reply(Reply::proven);
  EXPECT_EQ(pasted, QStringList{u"nuevo"_s});
}

TEST_F(PasteFromCollectionIntentTest, FailsBeforeThereIsAHistory) {
  PasteFromCollectionIntent(nullptr).perform({u"trabajo"_s}, outcome.taker());
  EXPECT_EQ(outcome.error(), Error::unavailable);
}

class CollectionEntityQueryTest : public testing::IntentFixture {};

TEST_F(CollectionEntityQueryTest, SuggestsTheCollectionsThatThereAre) {
  copyText(u"a"_s);
  copyText(u"b"_s);
  copyText(u"c"_s);
  collect(0, u"trabajo"_s);
  collect(1, u"casa"_s);
  const CollectionEntityQuery query(&services);
  EXPECT_EQ(query.suggestedEntities(), (QList<CollectionEntity>{{u"casa"_s}, {u"trabajo"_s}}));
  EXPECT_EQ(query.suggestedEntities().first().displayRepresentation(), u"casa");
  store().setCollection(clip(0).id, std::nullopt);
  EXPECT_EQ(query.suggestedEntities(), (QList<CollectionEntity>{{u"casa"_s}}));
}

TEST_F(CollectionEntityQueryTest, ResolvesExactNamesOnly) {
  copyText(u"a"_s);
  collect(0, u"casa"_s);
  const CollectionEntityQuery query(&services);
  EXPECT_EQ(query.entities({u"casa"_s}), (QList<CollectionEntity>{{u"casa"_s}}));
  EXPECT_TRUE(query.entities({u"Casa"_s, u"cas"_s, u""_s, u" casa"_s}).isEmpty());
}

TEST_F(CollectionEntityQueryTest, HasNoneBeforeThereIsAHistory) {
  EXPECT_TRUE(CollectionEntityQuery(nullptr).suggestedEntities().isEmpty());
  EXPECT_TRUE(CollectionEntityQuery(nullptr).entities({u"casa"_s}).isEmpty());
}

}  // namespace
}  // namespace nimbrel
