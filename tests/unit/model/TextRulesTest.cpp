#include "capture/model/TextRules.h"

#include <gmock/gmock.h>

#include "capture/model/IndexedClip.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(TextRules, TrimUnicodeWhiteSpaceAndLineBreaksFromBothEnds) {
  EXPECT_EQ(trimmedWhitespace(u" \t\u00a0\u2003\r\n a b \u2028\u0085"_s), u"a b"_s);
  EXPECT_TRUE(trimmedWhitespace(u" \n\u3000"_s).isEmpty());
  EXPECT_TRUE(trimmedWhitespace({}).isEmpty());
}

TEST(TextRules, CountWhatAReaderTakesForOneCharacter) {
  EXPECT_EQ(characterCount(u""_s), 0);
  EXPECT_EQ(characterCount(u"hola"_s), 4);
  EXPECT_EQ(characterCount(u"año"_s), 3);
  EXPECT_EQ(characterCount(u"an\u0303o"_s), 3);
  EXPECT_EQ(characterCount(u"a\r\nb"_s), 3);
  EXPECT_EQ(characterCount(u"a\n\rb"_s), 4);
  EXPECT_EQ(characterCount(u"👩‍👩‍👧"_s), 1);
  EXPECT_EQ(characterCount(u"🇪🇸🇫🇷"_s), 2);
}

TEST(TextRules, CutOnlyBetweenCharacters) {
  EXPECT_EQ(firstCharacters(u"hola"_s, 2), u"ho"_s);
  EXPECT_EQ(firstCharacters(u"hola"_s, 9), u"hola"_s);
  EXPECT_EQ(firstCharacters(u"ab\u0301c"_s, 2), u"ab\u0301"_s);
  EXPECT_EQ(firstCharacters(u"a👩‍👩‍👧b"_s, 2), u"a👩‍👩‍👧"_s);
  EXPECT_EQ(firstCharacters(u"a\r\nb"_s, 2), u"a\r\n"_s);
  EXPECT_EQ(firstCharacters(u"hola"_s, 0), u""_s);
  // One character of a thousand units, far longer than anything that is looked at first.
  const QString tall = u'a' + QString(1000, u'\u0301');
  EXPECT_EQ(firstCharacters(tall + tall + tall, 2), tall + tall);
  EXPECT_EQ(firstCharacters(u"’a\r\n"_s.repeated(500), 3), u"’a\r\n"_s);
  EXPECT_TRUE(hasCharacters(u"abc"_s, 3));
  EXPECT_FALSE(hasCharacters(u"ab\u0301"_s, 3));
}

TEST(TextRules, FoldCaseAndDiacritics) {
  EXPECT_EQ(foldedText(u"Canción"_s), "cancion");
  EXPECT_EQ(foldedText(u"CANCIO\u0301N"_s), "cancion");
  EXPECT_EQ(foldedText(u"ÀÉÎÕÜ ñ Ø"_s), QByteArray("aeiou n ø"));
  EXPECT_EQ(foldedText(u"İstanbul"_s), "istanbul");
  EXPECT_EQ(foldedText(u"ΌΣΟΣ"_s), foldedText(u"όσος"_s));
  EXPECT_EQ(foldedText(u"ЁЖИК"_s), foldedText(u"ежик"_s));
  EXPECT_EQ(foldedText(u"𐐀"_s), foldedText(u"𐐨"_s));
}

TEST(TextRules, FoldNulToASpaceWhichIndexAndFieldCanHold) {
  EXPECT_EQ(foldedText(u"a"_s + QChar(u'\0') + u"b"_s), "a b");
  EXPECT_EQ(foldedText(u"é"_s + QChar(u'\0') + u"b"_s), "e b");
}

TEST(TextRules, FoldEveryPlainLetterAsTheLongWayDoes) {
  // A combining mark in the text forces the long way, and vanishes.
  for (char16_t unit = 1; unit < 0x300; ++unit) {
    const QString letter{QChar(unit)};
    EXPECT_EQ(foldedText(letter), foldedText(letter + u'\u0301')) << static_cast<int>(unit);
  }
}

TEST(TextRules, SplitQueriesAtAnyWhiteSpace) {
  EXPECT_EQ(searchTerms(foldedText(u"  Uno\u00a0dos\ttrés \n"_s)), (QList<QByteArray>{"uno", "dos", "tres"}));
  EXPECT_TRUE(searchTerms(foldedText(u" \u2003 "_s)).isEmpty());
}

TEST(SearchBody, HoldsTextAndRecognisedTextFolded) {
  ClipItem clip;
  clip.text = u"Árbol"_s;
  clip.ocrText = u"VISTO"_s;
  EXPECT_EQ(searchBody(clip), QByteArray("arbol\nvisto"));
  clip.text.clear();
  EXPECT_EQ(searchBody(clip), QByteArray("visto"));
  clip.ocrText = QString();
  EXPECT_FALSE(searchBody(clip));
}

TEST(SearchBody, OfASensitiveClipDoesNotExist) {
  ClipItem clip;
  clip.text = u"secreto"_s;
  clip.sensitive = true;
  EXPECT_FALSE(searchBody(clip));
  clip.sensitive = false;
  EXPECT_TRUE(searchBody(clip));
}

TEST(SearchBody, HoldsAtMostFiftyThousandCharactersOfEach) {
  ClipItem clip;
  clip.text = QString(60'000, u'a');
  clip.ocrText = QString(60'000, u'b');
  EXPECT_EQ(searchBody(clip)->size(), 100'001);
}

TEST(CharacterCount, CountsWhatAReaderSeesAsOne) {
  for (const QString& character :
       {u"e\u0301"_s, u"👩‍👩‍👧‍👦"_s, u"🇪🇸"_s, u"\r\n"_s, u"😀"_s, u"1️⃣"_s}) {
    const QString nineteen = character.repeated(19);
    EXPECT_EQ(characterCount(nineteen), 19);
    EXPECT_FALSE(hasCharacters(nineteen, 20));
    EXPECT_TRUE(hasCharacters(nineteen + u'a', 20));
    EXPECT_FALSE(hasCharacters(character.repeated(200), 201));
    EXPECT_TRUE(hasCharacters(character.repeated(201), 201));
  }
}

TEST(FirstCharacters, CutsNoPairInHalf) {
  // As long as what is looked at first, with the two halves on both sides of its end.
  const QString text = u"a"_s + u"\u0301"_s.repeated(6) + u"\U0001F3FB"_s + u"b"_s.repeated(60);
  EXPECT_EQ(firstCharacters(text, 1), text.first(9));
}

TEST(StrictUtf8, TakesTextAndNothingElse) {
  EXPECT_EQ(strictUtf8("a\xc3\xb1o"), u"año"_s);
  EXPECT_EQ(strictUtf8("\xef\xbb\xbf"
                       "a"),
            u"\ufeffa"_s);
  EXPECT_EQ(strictUtf8(QByteArray("a\0b", 3)), QString(u"a\0b"_s));
  for (const char* const bytes : {"\xff", "\xc3", "\xc0\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80"})
    EXPECT_EQ(strictUtf8(bytes), std::nullopt) << bytes;
}

}  // namespace
}  // namespace nimbrel
