#include "capture/detection/BoundedPattern.h"

#include <gmock/gmock.h>

#include "capture/detection/TokenPatterns.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using Outcome = BoundedPattern::Outcome;

TEST(BoundedPattern, FindsTheFirstMatch) {
  const BoundedPattern pattern(u"[0-9]+"_s);
  const auto first = pattern.search(u"a12b345"_s);
  EXPECT_EQ(first.outcome, Outcome::found);
  EXPECT_EQ(first.offset, 1);
  EXPECT_EQ(first.length, 2);
  const auto second = pattern.search(u"a12b345"_s, 3);
  EXPECT_EQ(second.offset, 4);
  EXPECT_EQ(second.length, 3);
  EXPECT_EQ(pattern.search(u"ab"_s).outcome, Outcome::notFound);
}

TEST(BoundedPattern, OffersEachMatchInTurn) {
  const BoundedPattern pattern(u"[0-9]*"_s);
  QStringList offered;
  const auto refuse = [&](QStringView match) {
    if (!match.isEmpty()) offered.append(match.toString());
    return false;
  };
  EXPECT_FALSE(pattern.anyMatch(u"1a23😀4"_s + QChar(0xd800), 0, refuse));
  EXPECT_EQ(offered, (QStringList{u"1"_s, u"23"_s, u"4"_s}));
  EXPECT_TRUE(pattern.anyMatch(u"1a23"_s, 1, [](QStringView match) { return match == u"23"; }));
  EXPECT_FALSE(pattern.anyMatch(u"1a23"_s, 4, [](QStringView match) { return match == u"23"; }));
}

TEST(BoundedPattern, LooksBehindWhereItBegins) {
  EXPECT_FALSE(BoundedPattern(u"(?<![0-9])2"_s).search(u"12"_s, 1).outcome == Outcome::found);
}

TEST(BoundedPattern, GivesUpAndFindsNothing) {
  const BoundedPattern pattern(u"^(a+)+$"_s);
  EXPECT_TRUE(pattern.matches(u"aaaa"_s));
  int gaveUp = 0;
  for (int length = 20; length < 40; ++length) {
    const QString text = QString(length, u'a') + u'b';
    gaveUp += pattern.search(text).outcome == Outcome::gaveUp ? 1 : 0;
    EXPECT_FALSE(pattern.matches(text)) << length;
  }
  EXPECT_EQ(gaveUp, 20);
}

TEST(BoundedPattern, FindsNothingWhenItDoesNotCompile) {
  const BoundedPattern pattern(u"(a"_s);
  EXPECT_FALSE(pattern.isValid());
  EXPECT_EQ(pattern.search(u"(a"_s).outcome, Outcome::notFound);
}

TEST(BoundedPattern, SearchesTextsWithSingleSurrogates) {
  const BoundedPattern pattern(u"[0-9]+"_s);
  const auto match = pattern.search(QString(QChar(0xdc00)) + u"😀12"_s + QChar(0xd800));
  EXPECT_EQ(match.outcome, Outcome::found);
  EXPECT_EQ(match.offset, 3);
  EXPECT_EQ(match.length, 2);
}

TEST(BoundedPattern, NeverGivesUpOnACredentialHoweverTheTextIsMade) {
  int gaveUp = 0;
  const QStringList texts{u"-----BEGIN "_s.repeated(90'000),
                          u"-----BEGIN "_s + u"A"_s.repeated(8000) + u"PRIVATE KEY----"_s,
                          u"-----BEGIN "_s + u"PRIVATE KEY"_s.repeated(740),
                          u"eyJ"_s + u"a"_s.repeated(4000) + u".eyJ"_s + u"a"_s.repeated(4000),
                          u"eyJaaaaa."_s.repeated(900),
                          u"SG."_s + u"a"_s.repeated(8000),
                          u"SG."_s + u"a."_s.repeated(4000),
                          u"Bearer"_s + u" "_s.repeated(8000),
                          u"Bearer "_s + u"a"_s.repeated(8000) + u"!"_s,
                          u"xoxb-"_s + u"-"_s.repeated(8000) + u"!"_s};
  for (const TokenPattern& token : tokenPatterns()) {
    const BoundedPattern pattern(token.expression);
    for (const QString& text : texts)
      gaveUp += pattern.search(text).outcome == Outcome::gaveUp ? 1 : 0;
  }
  EXPECT_EQ(gaveUp, 0);
}

}  // namespace
}  // namespace nimbrel
