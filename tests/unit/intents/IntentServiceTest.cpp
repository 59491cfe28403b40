#include "intents/IntentService.h"

#include <gmock/gmock.h>

#include "unit/intents/IntentFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using Reply = AuthenticationReply::Outcome;

class IntentServiceTest : public testing::IntentFixture {
 protected:
  IntentServiceTest() { service.setServices(&services); }

  IntentReply perform(Intent intent, const QString& argument = {}) {
    std::optional<IntentReply> reply;
    service.perform({intent, argument}, [&](const IntentReply& given) { reply = given; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return reply.has_value(); }));
    return reply.value_or(IntentReply{});
  }
  QStringList suggest(const QStringList& terms) {
    std::optional<QStringList> ids;
    service.suggest(terms, [&](const QStringList& given) { ids = given; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return ids.has_value(); }));
    return ids.value_or(QStringList());
  }
  [[nodiscard]] QString idAt(qsizetype row) const { return clipIdText(clip(row).id); }
  void prove() {
    lock.authenticate(Lock::Reason::history, [](bool) {});
    authenticator.reply(Reply::proven);
  }

  IntentService service;
};

TEST_F(IntentServiceTest, CarriesOutEachIntent) {
  copyText(u"pan"_s);
  collect(0, u"compra"_s);
  EXPECT_EQ(perform(Intent::copyLatestClip), (IntentReply{.message = u"Último texto copiado."_s}));
  EXPECT_EQ(perform(Intent::searchHistory, u"pan"_s),
            (IntentReply{.message = u"Se encontraron 1 textos."_s, .texts = {u"pan"_s}}));
  EXPECT_EQ(perform(Intent::toggleCapture), (IntentReply{.message = u"Captura pausada."_s, .paused = true}));
  EXPECT_EQ(perform(Intent::toggleCapture), (IntentReply{.message = u"Captura reanudada."_s}));
  EXPECT_EQ(perform(Intent::pasteFromCollection, u"compra"_s), IntentReply{});
  EXPECT_EQ(pasted, QStringList{u"pan"_s});
  EXPECT_EQ(perform(Intent::listCollections), (IntentReply{.texts = {u"compra"_s}}));
}

TEST_F(IntentServiceTest, NamesAndDescribesErrors) {
  EXPECT_EQ(perform(Intent::copyLatestClip),
            (IntentReply{.error = u"emptyHistory"_s, .message = u"No hay texto seguro en el historial."_s}));
}

TEST_F(IntentServiceTest, IsUnavailableBeforeThereIsAHistoryAndAfter) {
  service.setServices(nullptr);
  for (const Intent intent : {Intent::copyLatestClip, Intent::searchHistory, Intent::toggleCapture,
                              Intent::pasteFromCollection, Intent::listCollections})
    EXPECT_EQ(perform(intent, u"x"_s),
              (IntentReply{.error = u"unavailable"_s, .message = u"Nimbrel no está disponible."_s}));
  EXPECT_TRUE(suggest({u"pan"_s}).isEmpty());
  EXPECT_TRUE(service.describe({u"x"_s}).isEmpty());
  service.choose(u"x"_s);
}

TEST_F(IntentServiceTest, RefusesWhatIsTooLong) {
  copyText(u"pan"_s);
  EXPECT_EQ(perform(Intent::searchHistory, QString(5000, u'x')).error, u"argumentTooLong");
  EXPECT_EQ(perform(Intent::pasteFromCollection, QString(5000, u'x')).error, u"argumentTooLong");
  EXPECT_EQ(perform(Intent::searchHistory, QString(4096, u'x')).error, QString());
  EXPECT_TRUE(suggest({QString(4000, u'p'), QString(4000, u'p')}).isEmpty());
}

TEST_F(IntentServiceTest, SuggestsSecureTextsWithAllTheTerms) {
  copyText(u"pan de molde"_s);
  copyText(u"pan"_s);
  copySecret(u"pan de secreto"_s);
  copyFile(u"/tmp/pan de.txt"_s);
  EXPECT_EQ(suggest({u"pan"_s, u"de"_s}), QStringList{idAt(3)});
  EXPECT_TRUE(suggest({}).isEmpty());
  EXPECT_TRUE(suggest({u" "_s}).isEmpty());
}

TEST_F(IntentServiceTest, DescribesASuggestionInOneLine) {
  copyText(u"uno\n\tdos  tres "_s + QString(500, u'x'));
  const auto described = service.describe({idAt(0)});
  ASSERT_EQ(described.size(), 1);
  EXPECT_EQ(described.first().id, idAt(0));
  EXPECT_TRUE(described.first().text.startsWith(u"uno dos tres xxx"));
  EXPECT_LE(described.first().text.size(), 200);
}

TEST_F(IntentServiceTest, SecretsAndUnknownIdsAreAlike) {
  copySecret(u"secreto"_s);
  copyFile(u"/tmp/x"_s);
  pasteboard.text = u"antes"_s;
  pasteboard.writes.clear();
  for (const QString& id : {idAt(1), idAt(0), u"nada"_s, clipIdText(QUuid::createUuid()), QString()}) {
    EXPECT_TRUE(service.describe({id}).isEmpty());
    service.choose(id);
  }
  EXPECT_TRUE(pasteboard.writes.isEmpty());
}

TEST_F(IntentServiceTest, DescribesNoMoreThanItSuggests) {
  copyText(u"pan"_s);
  EXPECT_EQ(service.describe(QStringList(1000, idAt(0))).size(), 20);
}

TEST_F(IntentServiceTest, ChoosingCopies) {
  copyText(u"pan"_s);
  copyText(u"leche"_s);
  service.choose(idAt(1));
  EXPECT_EQ(pasteboard.text, u"pan"_s);
}

TEST_F(IntentServiceTest, WithTheLockOnSuggestsNothingAndAsksNobody) {
  copyText(u"pan"_s);
  settings.lockMode = LockMode::sensitiveOnly;
  EXPECT_TRUE(suggest({u"pan"_s}).isEmpty());
  EXPECT_TRUE(service.describe({idAt(0)}).isEmpty());
  EXPECT_TRUE(authenticator.asked.isEmpty());
  prove();
  EXPECT_EQ(suggest({u"pan"_s}), QStringList{idAt(0)});
  EXPECT_EQ(service.describe({idAt(0)}).size(), 1);
  clock.advance(std::chrono::seconds(61));
  EXPECT_TRUE(suggest({u"pan"_s}).isEmpty());
}

TEST_F(IntentServiceTest, WithTheLockOnChoosingAsks) {
  copyText(u"pan"_s);
  copyText(u"leche"_s);
  settings.lockMode = LockMode::sensitiveOnly;
  service.choose(idAt(1));
  EXPECT_TRUE(pasteboard.writes.isEmpty());
  authenticator.reply(Reply::proven);
  EXPECT_EQ(pasteboard.text, u"pan"_s);
}

TEST_F(IntentServiceTest, AUserWhoRefusesIsNotAskedAgainForAWhile) {
  copyText(u"pan"_s);
  settings.lockMode = LockMode::sensitiveOnly;
  const auto ask = [this] {
    service.perform({Intent::copyLatestClip, {}}, [](const IntentReply&) {});
    return authenticator.asked.size();
  };
  EXPECT_EQ(ask(), 1);
  authenticator.reply(Reply::refused);
  clock.advance(std::chrono::seconds(14));
  EXPECT_EQ(perform(Intent::copyLatestClip).error, u"authenticationFailed");
  service.choose(idAt(0));
  EXPECT_EQ(authenticator.asked.size(), 1);
  // What asks for no proof goes on.
  EXPECT_EQ(perform(Intent::toggleCapture).error, QString());
  clock.advance(std::chrono::seconds(1));
  EXPECT_EQ(ask(), 2);
  authenticator.reply(Reply::refused);
  // Twice as long now.
  clock.advance(std::chrono::seconds(29));
  EXPECT_EQ(ask(), 2);
  clock.advance(std::chrono::seconds(1));
  EXPECT_EQ(ask(), 3);
  authenticator.reply(Reply::proven);
  clock.advance(std::chrono::seconds(61));
  EXPECT_EQ(ask(), 4);
  authenticator.reply(Reply::refused);
  clock.advance(std::chrono::seconds(15));
  EXPECT_EQ(ask(), 5);
}

TEST_F(IntentServiceTest, TheUsersOwnProofEndsTheWait) {
  copyText(u"pan"_s);
  settings.lockMode = LockMode::sensitiveOnly;
  service.perform({Intent::copyLatestClip, {}}, [](const IntentReply&) {});
  authenticator.reply(Reply::refused);
  clock.advance(std::chrono::seconds(1));
  prove();
  EXPECT_EQ(perform(Intent::copyLatestClip).error, QString());
}

TEST_F(IntentServiceTest, AProofThatRunsOutWhileItLooksIsNone) {
  copyText(u"pan"_s);
  settings.lockMode = LockMode::sensitiveOnly;
  prove();
  std::optional<QStringList> ids;
  service.suggest({u"pan"_s}, [&](const QStringList& given) { ids = given; });
  clock.advance(std::chrono::seconds(61));
  ASSERT_TRUE(QTest::qWaitFor([&] { return ids.has_value(); }));
  EXPECT_TRUE(ids->isEmpty());
}

}  // namespace
}  // namespace nimbrel
