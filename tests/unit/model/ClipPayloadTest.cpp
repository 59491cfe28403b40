#include "capture/model/ClipPayload.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(ClipPayload, WithoutTextFailsToDecode) {
  EXPECT_FALSE(decodePayload(R"({"ocr":"x","textHash":"y"})"));
  EXPECT_FALSE(decodePayload(R"({"text":null})"));
}

TEST(ClipPayload, WithTextAloneDecodesWithTheRestAbsent) {
  const auto payload = decodePayload(R"({"text":"hola"})");
  ASSERT_TRUE(payload);
  EXPECT_EQ(*payload, (ClipPayload{.text = u"hola"_s}));
}

TEST(ClipPayload, KeepsRecognisedTextUnderItsShortKey) {
  ClipItem clip;
  applyPayload(*decodePayload(R"({"text":"","ocr":"visto","ocrText":"otro"})"), clip);
  EXPECT_EQ(clip.ocrText, u"visto"_s);
  applyPayload(*decodePayload(R"({"text":"","ocrText":"otro"})"), clip);
  EXPECT_FALSE(clip.ocrText);
}

TEST(ClipPayload, WritesItsKeysInOrderAndNeverANull) {
  const ClipPayload all{u"t"_s, u"o"_s, u"h"_s, u"b"_s, u"n"_s, u"r"_s, u"c"_s, u"f"_s};
  EXPECT_EQ(
      encodePayload(all),
      R"({"text":"t","ocr":"o","textHash":"h","sourceBundleID":"b","sourceName":"n","richHash":"r","collection":"c","fileURLString":"f"})");
  EXPECT_EQ(encodePayload({.text = u"t"_s}), R"({"text":"t"})");
}

TEST(ClipPayload, ComesBackUnchangedWhateverTheText) {
  for (const QString& text : {QString(), u"con \"comillas\" y \\ y \n"_s, QString(u'\0') + u"tras un nulo"_s,
                              u"𝒳 👩‍👩‍👧 e\u0301 \u2028"_s, QString(100000, u'ñ')}) {
    const ClipPayload payload{.text = text, .collection = text};
    EXPECT_EQ(decodePayload(encodePayload(payload)), payload);
  }
}

TEST(ClipPayload, AcceptsAnyOrderAndIgnoresUnknownKeys) {
  const auto payload = decodePayload(R"({"novelty":{"a":[1,2]},"collection":"c","text":"t"})");
  ASSERT_TRUE(payload);
  EXPECT_EQ(payload->collection, u"c"_s);
}

TEST(ClipPayload, RefusesWhatIsNoSuchObject) {
  for (const QByteArray& bytes : {QByteArray(), QByteArray("[]"), QByteArray("\"text\""),
                                  QByteArray("{\"text\":1}"), QByteArray("{\"text\":\"a\",\"ocr\":[]}"),
                                  QByteArray("{\"text\":\"\xff\"}"), QByteArray("{\"text\":\"a\"} x")})
    EXPECT_FALSE(decodePayload(bytes)) << bytes.toStdString();
}

TEST(ClipPayload, SurvivesNestingOfAnyDepth) {
  const QByteArray deep = "{\"text\":\"t\",\"x\":" + QByteArray(1'000'000, '[');
  EXPECT_FALSE(decodePayload(deep));
}

}  // namespace
}  // namespace nimbrel
