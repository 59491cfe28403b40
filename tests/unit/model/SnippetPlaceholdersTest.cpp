#include "capture/model/SnippetPlaceholders.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class SnippetPlaceholders : public ::testing::Test {
 protected:
  QString expanded(const QString& text) {
    clip.text = text;
    return expandSnippets(clip, values);
  }

  ClipItem clip;
  SnippetValues values{.now = QDateTime(QDate(2026, 3, 14), QTime(15, 9)),
                       .locale = QLocale(QLocale::Spanish, QLocale::Spain),
                       .clipboard = std::nullopt};
};

TEST_F(SnippetPlaceholders, AreReplacedInBothLanguages) {
  const QString date = values.locale.toString(QDate(2026, 3, 14), QLocale::ShortFormat);
  const QString time = values.locale.toString(QTime(15, 9), QLocale::ShortFormat);
  EXPECT_EQ(expanded(u"{fecha}|{date}|{hora}|{time}|{año}|{year}"_s),
            date + u'|' + date + u'|' + time + u'|' + time + u"|2026|2026"_s);
}

TEST_F(SnippetPlaceholders, AreFoundInCapitalLettersToo) {
  EXPECT_EQ(expanded(u"{AÑO} {Year} {FECHA}"_s),
            u"2026 2026 "_s + values.locale.toString(QDate(2026, 3, 14), QLocale::ShortFormat));
}

TEST_F(SnippetPlaceholders, OfTheClipboardStayUnlessItsTextIsGiven) {
  EXPECT_EQ(expanded(u"a {clipboard} b"_s), u"a {clipboard} b"_s);
  values.clipboard = u"x"_s;
  EXPECT_EQ(expanded(u"a {CLIPBOARD} b"_s), u"a x b"_s);
}

TEST_F(SnippetPlaceholders, StayUntouchedInSensitiveClips) {
  clip.sensitive = true;
  EXPECT_EQ(expanded(u"{date}"_s), u"{date}"_s);
  EXPECT_FALSE(isTemplate(clip));
}

TEST_F(SnippetPlaceholders, StayUntouchedInImageAndFileClips) {
  clip.imageFile = u"a.png"_s;
  EXPECT_EQ(expanded(u"{date}"_s), u"{date}"_s);
  clip.imageFile.reset();
  clip.fileURLString = u"file:///a"_s;
  EXPECT_EQ(expanded(u"{date}"_s), u"{date}"_s);
}

TEST_F(SnippetPlaceholders, NeedBothBraces) {
  EXPECT_EQ(expanded(u"{ date"_s), u"{ date"_s);
  EXPECT_FALSE(qualifiesForSnippets(clip));
  clip.text = u"date }"_s;
  EXPECT_FALSE(qualifiesForSnippets(clip));
}

TEST_F(SnippetPlaceholders, NeverChangeTheClip) {
  expanded(u"{year}"_s);
  EXPECT_EQ(clip.text, u"{year}"_s);
}

TEST_F(SnippetPlaceholders, MakeATemplate) {
  clip.text = u"Hola {Fecha}"_s;
  EXPECT_TRUE(isTemplate(clip));
  clip.text = u"int main() { return 0; }"_s;
  EXPECT_FALSE(isTemplate(clip));
}

}  // namespace
}  // namespace nimbrel
