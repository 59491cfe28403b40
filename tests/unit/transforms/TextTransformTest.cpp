#include "capture/transforms/TextTransform.h"

#include <gmock/gmock.h>

#include <QJsonDocument>
#include <random>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using enum TextTransform;
using ::testing::Optional;

std::optional<QString> applied(TextTransform transform, const QString& text) {
  return nimbrel::apply(transform, text, QLocale(QLocale::Spanish));
}

QString title(const QString& text, const QLocale& locale = QLocale(QLocale::Spanish)) {
  return nimbrel::apply(titleCase, text, locale).value();
}

/// A text of characters of all kinds, always the same for a seed.
QString anyText(std::mt19937& random, int length) {
  constexpr std::u32string_view kCharacters =
      U" \t\n\r\u2028aZ09%+/=-_\"\\{}[]:,ñÑßıİſ\u0301Σσςǆ字\u0000\u007f\u00a0\ufeff\U0001f600\U00010400"
      U"\u1fb3éﬁ.'’";
  QString text;
  for (int i = 0; i < length; ++i) {
    const char32_t c = kCharacters[random() % kCharacters.size()];
    text += QString::fromUcs4(&c, 1);
  }
  return text;
}

TEST(TextTransform, HasItsLabelsInTheOrderOfTheMenu) {
  const QStringList labels{u"Mayúsculas"_s,
                           u"Minúsculas"_s,
                           u"Tipo título"_s,
                           u"Recortar espacios"_s,
                           u"Quitar saltos de línea"_s,
                           u"Codificar URL"_s,
                           u"Decodificar URL"_s,
                           u"Codificar Base64"_s,
                           u"Decodificar Base64"_s,
                           u"Formatear JSON"_s,
                           u"Compactar JSON"_s};
  ASSERT_EQ(kTextTransforms.size(), labels.size());
  for (std::size_t i = 0; i < kTextTransforms.size(); ++i)
    EXPECT_EQ(label(kTextTransforms.at(i)), labels[static_cast<qsizetype>(i)]);
}

TEST(TextTransform, IsFoundByItsName) {
  for (const TextTransform transform : kTextTransforms)
    EXPECT_EQ(textTransformNamed(name(transform)), transform);
  EXPECT_EQ(name(formatJSON), u"formatJSON"_s);
  EXPECT_EQ(textTransformNamed(u"Uppercase"), std::nullopt);
  EXPECT_EQ(textTransformNamed(u""), std::nullopt);
}

TEST(Uppercase, FollowsUnicodeAndNoLocale) {
  EXPECT_THAT(applied(uppercase, u"mañana, straße i ﬁn"_s), Optional(u"MAÑANA, STRASSE I FIN"_s));
  EXPECT_THAT(nimbrel::apply(uppercase, u"istanbul"_s, QLocale(QLocale::Turkish)), Optional(u"ISTANBUL"_s));
  EXPECT_THAT(applied(uppercase, u""_s), Optional(u""_s));
}

TEST(Lowercase, FollowsUnicodeAndNoLocale) {
  EXPECT_THAT(applied(lowercase, u"MAÑANA ΟΔΟΣ 𐐀"_s), Optional(u"mañana οδος 𐐨"_s));
  EXPECT_THAT(nimbrel::apply(lowercase, u"ISTANBUL"_s, QLocale(QLocale::Turkish)), Optional(u"istanbul"_s));
}

TEST(TitleCase, CapitalisesEachWordAndMakesTheRestSmall) {
  EXPECT_EQ(title(u"¿qué TAL, señor garcía-lópez?"_s), u"¿Qué Tal, Señor García-López?"_s);
  EXPECT_EQ(title(u"don't stop"_s), u"Don't Stop"_s);
  EXPECT_EQ(title(u"el 2º apartado, 1er piso"_s), u"El 2º Apartado, 1Er Piso"_s);
  EXPECT_EQ(title(u"uno\ndos\ttres"_s), u"Uno\nDos\tTres"_s);
  EXPECT_EQ(title(u"ǆep"_s), u"ǅep"_s);
  EXPECT_EQ(title(u""_s), u""_s);
}

TEST(TitleCase, FollowsTheLocale) {
  EXPECT_EQ(title(u"istanbul ILICA"_s, QLocale(QLocale::Turkish)), u"İstanbul Ilıca"_s);
  EXPECT_EQ(title(u"ijsland"_s, QLocale(QLocale::Dutch)), u"IJsland"_s);
  EXPECT_EQ(title(u"ijsland"_s, QLocale(QLocale::English)), u"Ijsland"_s);
  EXPECT_EQ(title(u"istanbul"_s, QLocale::c()), u"Istanbul"_s);
}

TEST(TrimWhitespace, LeavesWhatIsInside) {
  EXPECT_THAT(applied(trimWhitespace, u" \n\u00a0 uno  dos\n\ntres \t\u2028"_s),
              Optional(u"uno  dos\n\ntres"_s));
  EXPECT_THAT(applied(trimWhitespace, u"   "_s), Optional(u""_s));
  EXPECT_THAT(applied(trimWhitespace, u"uno"_s), Optional(u"uno"_s));
}

TEST(RemoveLineBreaks, MakesOneSpaceOfEachRun) {
  EXPECT_THAT(applied(removeLineBreaks, u"a\r\n\r\nb"_s), Optional(u"a b"_s));
  EXPECT_THAT(applied(removeLineBreaks, u"a\n\r\v\f\u0085\u2028\u2029b"_s), Optional(u"a b"_s));
  EXPECT_THAT(applied(removeLineBreaks, u"\na\n"_s), Optional(u" a "_s));
}

TEST(RemoveLineBreaks, KeepsTheSpacesAround) {
  EXPECT_THAT(applied(removeLineBreaks, u"a \n b"_s), Optional(u"a   b"_s));
  EXPECT_THAT(applied(removeLineBreaks, u"a\n \nb"_s), Optional(u"a   b"_s));
  EXPECT_THAT(applied(removeLineBreaks, u"a\tb"_s), Optional(u"a\tb"_s));
}

TEST(UrlEncode, LeavesWhatAPathMayHold) {
  const QString allowed =
      u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789!$&'()*+,-./:=@_~"_s;
  for (char16_t c = 0; c < 0x80; ++c) {
    const QString expected =
        allowed.contains(QChar(c)) ? QString(QChar(c)) : u"%%1"_s.arg(int{c}, 2, 16, QChar(u'0')).toUpper();
    EXPECT_THAT(applied(urlEncode, QChar(c)), Optional(expected)) << int{c};
  }
  EXPECT_THAT(applied(urlEncode, u"año 50 %; ¿5 €?"_s),
              Optional(u"a%C3%B1o%2050%20%25%3B%20%C2%BF5%20%E2%82%AC%3F"_s));
}

TEST(UrlEncode, RefusesHalfACharacter) {
  EXPECT_EQ(applied(urlEncode, QString(u'a') + QChar(0xd83d)), std::nullopt);
}

TEST(UrlDecode, ReadsEscapedBytes) {
  EXPECT_THAT(applied(urlDecode, u"a%20b"_s), Optional(u"a b"_s));
  EXPECT_THAT(applied(urlDecode, u"%e2%82%ac"_s), Optional(u"€"_s));
  EXPECT_THAT(applied(urlDecode, u"a+b ñ"_s), Optional(u"a+b ñ"_s));
  EXPECT_THAT(applied(urlDecode, u""_s), Optional(u""_s));
  EXPECT_THAT(applied(urlDecode, u"%EF%BB%BFa%00"_s), Optional(QString(u"\ufeffa\0"_s)));
}

TEST(UrlDecode, RefusesAnIncompleteEscape) {
  for (const QString& text :
       {u"100%"_s, u"%"_s, u"%2"_s, u"%zz"_s, u"%2g"_s, u"a%20%"_s, u"%%20"_s, u"%２0"_s})
    EXPECT_EQ(applied(urlDecode, text), std::nullopt) << qPrintable(text);
}

TEST(UrlDecode, RefusesBytesThatAreNoText) {
  for (const QString& text :
       {u"%ff"_s, u"%c3"_s, u"%c3%28"_s, u"%ed%a0%80"_s, u"%c0%80"_s, u"%f4%90%80%80"_s})
    EXPECT_EQ(applied(urlDecode, text), std::nullopt) << qPrintable(text);
}

TEST(Base64Encode, WritesOneLineWithPadding) {
  EXPECT_THAT(applied(base64Encode, u"hello"_s), Optional(u"aGVsbG8="_s));
  EXPECT_THAT(applied(base64Encode, u"¿año?>"_s), Optional(u"wr9hw7FvPz4="_s));
  EXPECT_THAT(applied(base64Encode, u""_s), Optional(u""_s));
  // ÿ is C3 BF in UTF-8; three of them make eight characters.
  EXPECT_THAT(applied(base64Encode, QString(3000, u'ÿ')), Optional(u"w7/Dv8O/"_s.repeated(1000)));
}

TEST(Base64Decode, ReadsWhatIsPadded) {
  EXPECT_THAT(applied(base64Decode, u"aGVsbG8="_s), Optional(u"hello"_s));
  EXPECT_THAT(applied(base64Decode, u"wr9hw7FvPz4="_s), Optional(u"¿año?>"_s));
  EXPECT_THAT(applied(base64Decode, u"YQ=="_s), Optional(u"a"_s));
  EXPECT_THAT(applied(base64Decode, u""_s), Optional(u""_s));
}

TEST(Base64Decode, RefusesEverythingThatIsNotStrict) {
  for (const QString& text : {u"aGVsbG8"_s, u"aGVs bG8="_s, u" aGVsbG8="_s, u"aGVsbG8=\n"_s, u"aGVs\nbG8="_s,
                              u"_-8="_s, u"wr9hw7FvPz4"_s, u"aGVsbG8=="_s, u"="_s, u"===="_s, u"a==="_s,
                              u"YQ==YQ=="_s, u"YQ=a"_s, u"Y=Q="_s, u"aGVsbG8ñ"_s, u"aGVsbG=8"_s, u"¡hola!"_s})
    EXPECT_EQ(applied(base64Decode, text), std::nullopt) << qPrintable(text);
}

TEST(Base64Decode, TakesBitsThatMeanNothing) {
  EXPECT_THAT(applied(base64Decode, u"YR=="_s), Optional(u"a"_s));
}

TEST(Base64Decode, RefusesBytesThatAreNoText) {
  EXPECT_EQ(applied(base64Decode, u"/w=="_s), std::nullopt);
  EXPECT_EQ(applied(base64Decode, u"7aCA"_s), std::nullopt);
}

TEST(FormatJson, IndentsWithTwoSpacesAndSortsTheKeys) {
  EXPECT_THAT(applied(formatJSON, uR"({"b":[1,{"d":null}],"a":{},"c":[]})"_s), Optional(uR"({
  "a": {},
  "b": [
    1,
    {
      "d": null
    }
  ],
  "c": []
})"_s));
}

TEST(CompactJson, LeavesNoSpaceAndSortsTheKeys) {
  EXPECT_THAT(applied(compactJSON, u" { \"b\" : [ 1 , true ,\r\n false ] ,\t\"a\" : \"x y\" } "_s),
              Optional(uR"({"a":"x y","b":[1,true,false]})"_s));
}

TEST(Json, SortsKeysByCodePoint) {
  EXPECT_THAT(
      applied(compactJSON, uR"({"😀":1,"﷐":2,"ñ":3,"b":4,"a":5,"B":6,"":7,"aa":8,"\u0000":9})"_s),
      Optional(uR"({"":7,"\u0000":9,"B":6,"a":5,"aa":8,"b":4,"ñ":3,"﷐":2,"😀":1})"_s));
}

TEST(Json, KeepsMembersOfTheSameNameInTheirOrder) {
  EXPECT_THAT(applied(compactJSON, uR"({"b":0,"a":2,"a":{"x":1},"a":1})"_s),
              Optional(uR"({"a":2,"a":{"x":1},"a":1,"b":0})"_s));
}

TEST(Json, KeepsNumbersAsTheyWereWritten) {
  const QString numbers =
      u"[0,-0,1.10,1E5,1e+05,-0.0e-0,9007199254740993,18446744073709551616,1e400,-1e-400,0.1000000000000000055511151]"_s;
  EXPECT_THAT(applied(compactJSON, numbers), Optional(numbers));
  const QString digits(400, u'9');
  EXPECT_THAT(applied(compactJSON, digits), Optional(digits));
  EXPECT_THAT(applied(compactJSON, u"{\"1e400\":1e400,\"\\\"2\":-2}"_s),
              Optional(u"{\"\\\"2\":-2,\"1e400\":1e400}"_s));
}

TEST(Json, TakesAnyValueAtItsTop) {
  for (const QString& value : {u"1"_s, u"\"uno\""_s, u"null"_s, u"true"_s, u"[]"_s, u"{}"_s}) {
    EXPECT_THAT(applied(compactJSON, u" \n"_s + value + u"\t\r"_s), Optional(value));
    EXPECT_THAT(applied(formatJSON, value), Optional(value));
  }
}

TEST(Json, WritesStringsAnew) {
  EXPECT_THAT(applied(compactJSON, uR"("\u00f1\/\ud83d\ude00\n\u001f\"\\")"_s),
              Optional(uR"("ñ/😀\n\u001F\"\\")"_s));
}

TEST(Json, RefusesWhatIsNoJson) {
  for (const QString& text : {u""_s,
                              u" "_s,
                              u"{"_s,
                              u"[1,]"_s,
                              u"{\"a\":1,}"_s,
                              u"{a:1}"_s,
                              u"{'a':1}"_s,
                              u"[1 2]"_s,
                              u"1 2"_s,
                              u"{} x"_s,
                              u"01"_s,
                              u"-01"_s,
                              u"-"_s,
                              u"+1"_s,
                              u"1."_s,
                              u".5"_s,
                              u"1e"_s,
                              u"1e+"_s,
                              u"0x1F"_s,
                              u"NaN"_s,
                              u"Infinity"_s,
                              u"-Infinity"_s,
                              u"tru"_s,
                              u"nullx"_s,
                              u"null5"_s,
                              u"1-2"_s,
                              u"1.2.3"_s,
                              u"\"a"_s,
                              u"\"\\x\""_s,
                              u"\"\\u12g4\""_s,
                              u"\"\n\""_s,
                              u"// a\n1"_s,
                              u"/**/1"_s,
                              u"]"_s,
                              u"{\"a\" 1}"_s,
                              u"{1:1}"_s,
                              u"[\"a\":1]"_s,
                              u"\"\\ud800\""_s,
                              u"\"\\udc00\\ud800\""_s,
                              u"{}\ufeff"_s,
                              u"\"\\udc00\""_s,
                              u"{\"a\\ude00b\":1}"_s,
                              u"\"\\ud800\\udc00\\udfff\""_s,
                              u"\u00a01"_s}) {
    EXPECT_EQ(applied(compactJSON, text), std::nullopt) << qPrintable(text);
    EXPECT_EQ(applied(formatJSON, text), std::nullopt) << qPrintable(text);
  }
}

TEST(Json, LeavesAByteOrderMarkOut) {
  EXPECT_THAT(applied(compactJSON, u"\ufeff{ }"_s), Optional(u"{}"_s));
}

TEST(Json, IsNotOverAtANul) {
  EXPECT_EQ(applied(compactJSON, u"{}\0 y más"_s), std::nullopt);
  EXPECT_EQ(applied(compactJSON, u"\"a\0b\""_s), std::nullopt);
}

TEST(Json, NestsToAnyDepth) {
  constexpr int kDepth = 500'000;
  const QString arrays = u"["_s.repeated(kDepth) + u"]"_s.repeated(kDepth);
  EXPECT_TRUE(applied(compactJSON, arrays) == arrays);
  EXPECT_EQ(applied(compactJSON, arrays + u']'), std::nullopt);
  EXPECT_EQ(applied(compactJSON, u"["_s.repeated(kDepth)), std::nullopt);
  const QString objects = u"{\"a\":"_s.repeated(kDepth) + u"1"_s + u"}"_s.repeated(kDepth);
  EXPECT_TRUE(applied(compactJSON, objects) == objects);
}

TEST(Json, IsNeverIndentedOutOfProportion) {
  constexpr int kDepth = 100'000;
  const QString arrays = u"["_s.repeated(kDepth) + u"]"_s.repeated(kDepth);
  const auto formatted = applied(formatJSON, arrays);
  ASSERT_TRUE(formatted);
  EXPECT_LE(formatted->size(), arrays.size() * 70);
  EXPECT_TRUE(applied(compactJSON, *formatted) == arrays);
}

/// A JSON value written with spaces and escapes here and there.
QString anyJson(std::mt19937& random, int depth) {
  const auto below = [&](unsigned count) { return static_cast<int>(random() % count); };
  const auto space = [&] { return QStringList{u""_s, u""_s, u" "_s, u"\n\t"_s, u"\r\n"_s}.at(below(5)); };
  const auto string = [&] {
    QString text;
    for (int i = below(6); i > 0; --i)
      text += QStringList{u"a"_s,    u"B"_s, u"ñ"_s, u"😀"_s, u"\\u0041"_s, u"\\n"_s, u"\\\""_s,
                          u"\\\\"_s, u"5"_s, u"-"_s, u"{"_s, u"/"_s,       u"\\/"_s}
                  .at(below(13));
    return u'"' + text + u'"';
  };
  const int kind = below(depth > 0 ? 7 : 5);
  if (kind == 0) return QStringList{u"null"_s, u"true"_s, u"false"_s}.at(below(3));
  if (kind < 3)
    return QStringList{u"0"_s, u"-1.50"_s, u"1E+400"_s, u"123456789012345678901234567890"_s}.at(below(4));
  if (kind < 5) return string();
  const bool object = kind == 5;
  QStringList children;
  for (int i = below(5); i > 0; --i)
    children.append((object ? string() + space() + u':' : QString()) + space() + anyJson(random, depth - 1) +
                    space());
  return (object ? u'{' : u'[') + space() + children.join(u',' + space()) + (object ? u'}' : u']');
}

TEST(Json, MeansTheSameInEveryLayout) {
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    const QString json = anyJson(random, 5);
    const auto compact = applied(compactJSON, json);
    const auto formatted = applied(formatJSON, json);
    ASSERT_TRUE(compact && formatted) << qPrintable(json);
    ASSERT_EQ(applied(compactJSON, *formatted), compact) << qPrintable(json);
    ASSERT_EQ(applied(formatJSON, *compact), formatted) << qPrintable(json);
    ASSERT_EQ(applied(compactJSON, *compact), compact) << qPrintable(json);
    ASSERT_EQ(applied(formatJSON, *formatted), formatted) << qPrintable(json);
    // Another parser sees the same value in it; of members with one name it keeps the last.
    const auto value = [](const QString& text) {
      return QJsonDocument::fromJson(u"[%1]"_s.arg(text).toUtf8());
    };
    ASSERT_EQ(value(*compact), value(json)) << qPrintable(json);
  }
}

TEST(TextTransform, GivesBackWhatItEncoded) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    const QString text = anyText(random, static_cast<int>(random() % 40));
    const auto url = applied(urlEncode, text);
    ASSERT_TRUE(url);
    EXPECT_THAT(applied(urlDecode, *url), Optional(text));
    const auto base64 = applied(base64Encode, text);
    ASSERT_TRUE(base64);
    EXPECT_THAT(applied(base64Decode, *base64), Optional(text));
  }
}

TEST(TextTransform, DoesNothingTheSecondTime) {
  std::mt19937 random(2);
  for (int round = 0; round < 3000; ++round) {
    const QString text = anyText(random, static_cast<int>(random() % 40));
    for (const TextTransform transform : {uppercase, lowercase, trimWhitespace, removeLineBreaks}) {
      const auto once = applied(transform, text);
      ASSERT_TRUE(once);
      EXPECT_EQ(applied(transform, *once), once) << qPrintable(name(transform) + u": "_s + text);
    }
  }
}

TEST(TextTransform, TakesTextsThatAreNone) {
  const QString halves = QString(QChar(0xdc00)) + u'a' + QChar(0xd800);
  for (const TextTransform transform : kTextTransforms)
    static_cast<void>(applied(transform, halves));
  EXPECT_EQ(applied(uppercase, halves), QString(QString(QChar(0xdc00)) + u'A' + QChar(0xd800)));
}

TEST(TextTransform, TakesTheLongestText) {
  const QString text = u"año ß\n"_s.repeated(150'000);
  for (const TextTransform transform :
       {uppercase, lowercase, titleCase, removeLineBreaks, urlEncode, base64Encode})
    EXPECT_GE(applied(transform, text)->size(), text.size()) << qPrintable(name(transform));
}

}  // namespace
}  // namespace nimbrel
