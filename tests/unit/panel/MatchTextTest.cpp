#include "panel/MatchText.h"

#include <gmock/gmock.h>

#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

QList<QByteArray> terms(const QString& query) {
  return searchTerms(foldedText(query));
}

QStringList found(const QString& text, const QString& query) {
  QStringList parts;
  for (const TextRange& range : matchRanges(text, terms(query)))
    parts.append(text.sliced(range.start, range.length));
  return parts;
}

TEST(MatchRanges, AreWhatTheReaderSeesWhateverCaseAndAccents) {
  EXPECT_THAT(found(u"La Canción y la CANCION"_s, u"cancion"_s), ElementsAre(u"Canción"_s, u"CANCION"_s));
  EXPECT_THAT(found(u"cancio\u0301n, cafe\u0301"_s, u"cancion cafe"_s),
              ElementsAre(u"cancio\u0301n"_s, u"cafe\u0301"_s));
  EXPECT_THAT(found(u"İstanbul"_s, u"istanbul"_s), ElementsAre(u"İstanbul"_s));
  EXPECT_THAT(found(u"👩‍👩‍👧 hola 👍"_s, u"👍"_s), ElementsAre(u"👍"_s));
}

TEST(MatchRanges, OfSeveralTermsAreInOrderAndNeverOverlap) {
  EXPECT_THAT(found(u"dos uno dos"_s, u"uno dos"_s), ElementsAre(u"dos"_s, u"uno"_s, u"dos"_s));
  EXPECT_THAT(found(u"abcd"_s, u"abc bcd"_s), ElementsAre(u"abcd"_s));
}

TEST(MatchRanges, AreNoneWithoutAMatchOrATerm) {
  EXPECT_THAT(found(u"hola"_s, u"adiós"_s), IsEmpty());
  EXPECT_THAT(found(u"hola"_s, u" "_s), IsEmpty());
  EXPECT_THAT(found(QString(), u"a"_s), IsEmpty());
}

TEST(MatchRanges, SurviveBrokenSurrogates) {
  const QString text = QString(QChar(0xd83d)) + u"hola"_s + QChar(0xdc00);
  EXPECT_THAT(found(text, u"hola"_s), ElementsAre(u"hola"_s));
}

TEST(Excerpt, ShowsAMatchWithTheWordsAroundItInOneLine) {
  const QString text = QString(u"relleno "_s).repeated(100) + u"las\n«canciones populares» que"_s;
  const QString excerpt = excerptOf(text, terms(u"cancion"_s));
  EXPECT_TRUE(excerpt.startsWith(u"… "_s));
  EXPECT_TRUE(excerpt.endsWith(u"las «canciones populares» que"_s)) << excerpt.toStdString();
  EXPECT_EQ(excerptOf(u"Una canción"_s, terms(u"cancion"_s)), u"Una canción"_s);
}

TEST(Excerpt, IsEmptyWithoutAMatchInWhatSearchSees) {
  EXPECT_TRUE(excerptOf(u"hola"_s, terms(u"adiós"_s)).isEmpty());
  const QString text = QString(50'000, u'a') + u" aguja"_s;
  EXPECT_TRUE(excerptOf(text, terms(u"aguja"_s)).isEmpty());
}

TEST(Excerpt, NeverCutsALetterInTwo) {
  const QString text =
      QString(u"👩‍👩‍👧"_s).repeated(60) + u"aguja"_s + QString(u"e\u0301"_s).repeated(60);
  const QString excerpt = excerptOf(text, terms(u"aguja"_s));
  ASSERT_FALSE(excerpt.isEmpty());
  EXPECT_FALSE(excerpt.at(2).isLowSurrogate());
  EXPECT_FALSE(excerpt.back().isHighSurrogate());
}

TEST(Excerpt, FindsAMatchWhereverItLies) {
  // Also across the ends of the stretches that are looked at one after the other.
  for (qsizetype before = 4080; before <= 4100; ++before) {
    const QString text = QString(before, u'ж') + u"agúja"_s + QString(5000, u'ж');
    EXPECT_TRUE(excerptOf(text, terms(u"aguja"_s)).contains(u"agúja")) << before;
  }
  EXPECT_TRUE(excerptOf(QString(49'990, u'ж') + u"aguja"_s, terms(u"aguja"_s)).contains(u"aguja"));
}

}  // namespace
}  // namespace nimbrel
