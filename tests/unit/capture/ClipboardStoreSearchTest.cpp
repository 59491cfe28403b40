#include <gmock/gmock.h>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class Search : public testing::StoreFixture {
 protected:
  /// The texts of the clips found, in history order.
  QStringList found(const QString& query) {
    database().flush();
    QStringList texts;
    for (const ClipRef& clip : store().search(query))
      texts.append(clip->clip.text);
    return texts;
  }
};

TEST_F(Search, FindsTermsWhateverTheirCaseAndAccents) {
  launch();
  copyText(u"Canción de cuna"_s);
  copyText(u"otra cosa"_s);
  for (const QString& query : {u"cancion"_s, u"CANCIÓN"_s, u"cuna canción"_s, u"  CuNa  "_s, u"ion de"_s})
    EXPECT_EQ(found(query), QStringList{u"Canción de cuna"_s}) << query.toStdString();
  EXPECT_EQ(found(u"canción cosa"_s), QStringList());
}

TEST_F(Search, MatchesShortTermsInMemory) {
  launch();
  copyText(u"Año"_s);
  copyText(u"ab"_s);
  EXPECT_EQ(found(u"añ"_s), QStringList{u"Año"_s});
  EXPECT_EQ(found(u"B"_s), QStringList{u"ab"_s});
}

TEST_F(Search, OfShortTermsNeverConsultsTheIndex) {
  launch();
  copyText(u"abc"_s);
  database().flush();
  // The index is emptied behind the store's back: what is still found was found in memory.
  database().rebuildIndex({});
  EXPECT_EQ(found(u"ab"_s), QStringList{u"abc"_s});
  EXPECT_EQ(found(u"abc"_s), QStringList());
}

TEST_F(Search, CombinesLongAndShortTerms) {
  launch();
  copyText(u"palabra xy"_s);
  copyText(u"palabra z"_s);
  EXPECT_EQ(found(u"palabra xy"_s), QStringList{u"palabra xy"_s});
}

TEST_F(Search, NeverFindsASensitiveClipByEitherRoad) {
  launch();
  copySecret(u"secreto ab"_s);
  copyText(u"abierto secreto"_s);
  EXPECT_EQ(found(u"secreto"_s), QStringList{u"abierto secreto"_s});
  EXPECT_EQ(found(u"ab"_s), QStringList{u"abierto secreto"_s});
  EXPECT_EQ(found(u"secreto ab"_s), QStringList{u"abierto secreto"_s});
  EXPECT_EQ(found(u""_s), QStringList{u"abierto secreto"_s});
}

TEST_F(Search, WorksInMemoryWhileTheIndexIsBeingBuilt) {
  launch();
  copyText(u"palabra"_s);
  quit();
  launch();
  // No flush: whether the rebuild is done or not, the answer is the same.
  EXPECT_EQ(store().search(u"palabra"_s).size(), 1);
}

TEST_F(Search, AnswersTheSameQuestionFromItsCacheUntilTheHistoryChanges) {
  launch();
  copyText(u"palabra uno"_s);
  EXPECT_EQ(found(u"palabra"_s).size(), 1);
  // Nobody would find it any more who looked again.
  database().rebuildIndex({});
  EXPECT_EQ(found(u"palabra"_s).size(), 1);
  store().togglePin(clip(0).id);
  ASSERT_EQ(store().search(u"palabra"_s).size(), 1);
  EXPECT_TRUE(store().search(u"palabra"_s).first()->clip.pinned);
  copyText(u"nada"_s);
  EXPECT_EQ(found(u"palabra"_s).size(), 0);
}

TEST_F(Search, FindsRecognisedText) {
  {
    HistoryCipher cipher(secrets, random);
    ClipDatabase before(path(u"brevin.sqlite"_s), cipher);
    ClipItem image = testing::textClip(QString());
    image.imageFile = u"A.png"_s;
    image.ocrText = u"Factura número 7"_s;
    ASSERT_TRUE(before.saveMany({image}));
  }
  launch();
  EXPECT_EQ(found(u"numero"_s).size(), 1);
  EXPECT_EQ(found(u"7"_s).size(), 1);
}

TEST_F(Search, SeesOnlyTheFirstFiftyThousandCharacters) {
  launch();
  copyText(QString(50'000, u'a') + u"zzz"_s);
  EXPECT_EQ(found(u"zzz"_s), QStringList());
  EXPECT_EQ(found(u"zz"_s), QStringList());
  EXPECT_EQ(found(u"aaa"_s).size(), 1);
}

TEST_F(Search, FindsTermsTooCommonForTheIndex) {
  settings.maxUnpinned = 3000;
  launch();
  for (int i = 0; i < 2500; ++i)
    copyText(u"palabra %1"_s.arg(i));
  EXPECT_EQ(found(u"palabra"_s).size(), 2500);
  EXPECT_EQ(found(u"palabra"_s).first(), u"palabra 2499"_s);
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(Search, TreatsQuotesAsText) {
  launch();
  copyText(u"di \"hola\" ya"_s);
  EXPECT_EQ(found(u"\"hola\""_s).size(), 1);
  EXPECT_EQ(found(u"\"\""_s).size(), 0);
  EXPECT_TRUE(log.lines().isEmpty());
}

}  // namespace
}  // namespace nimbrel
