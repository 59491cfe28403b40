#include "platform/macos/values/PasteboardReading.h"

#include <gmock/gmock.h>

#include <QHash>

#include "platform/PasteboardTypes.h"

namespace nimbrel::macos {
namespace {

using namespace Qt::StringLiterals;

/// A pasteboard that notes what is read of it.
class FakeReader final : public PasteboardReader {
 public:
  QStringList types() override {
    read.append(u"types"_s);
    return offered;
  }
  QList<QUrl> fileUrls() override {
    read.append(u"files"_s);
    return files;
  }
  Reading<QString> text(qint64 maxBytes) override {
    read.append(u"text"_s);
    if (content && content->toUtf8().size() > maxBytes) return {.content = std::nullopt, .isTooLarge = true};
    return {.content = content, .isTooLarge = false};
  }
  Reading<QByteArray> data(const QString& type, qint64 maxBytes) override {
    read.append(type);
    if (!bytes.contains(type)) return {};
    if (bytes.value(type).size() > maxBytes) return {.content = std::nullopt, .isTooLarge = true};
    return {.content = bytes.value(type), .isTooLarge = false};
  }

  QStringList offered{u"any"_s};
  QList<QUrl> files;
  std::optional<QString> content;
  QHash<QString, QByteArray> bytes;
  QStringList read;
};

struct PasteboardReadingTest : ::testing::Test {
  PasteboardSnapshot snapshot() { return readSnapshot(reader, policy, 5, front); }

  FakeReader reader;
  PasteboardReadPolicy policy{.ignoredTypes = {pasteboardType::concealed.toString()},
                              .maxTextBytes = 10,
                              .maxImageBytes = 10,
                              .maxRichBytes = 10,
                              .wantsRichText = true,
                              .ignoredApplications = {u"com.example.vault"_s}};
  std::optional<RunningApplication> front = RunningApplication{.identifier = u"com.example.editor"_s};
};

TEST_F(PasteboardReadingTest, KeepsTheChangeAndTheApplicationInFront) {
  EXPECT_EQ(snapshot().changeCount, 5);
  EXPECT_EQ(snapshot().frontApplication, front);
}

TEST_F(PasteboardReadingTest, ReadsNothingAtAllWhilePaused) {
  policy.paused = true;
  reader.content = u"a"_s;
  EXPECT_TRUE(snapshot().types.isEmpty());
  EXPECT_TRUE(reader.read.isEmpty());
}

TEST_F(PasteboardReadingTest, ReadsOnlyTheTypesOfWhatIsToBeIgnored) {
  reader.offered = {u"public.utf8-plain-text"_s, pasteboardType::concealed.toString()};
  reader.content = u"secret"_s;
  EXPECT_FALSE(snapshot().text);
  EXPECT_EQ(reader.read, QStringList{u"types"_s});
}

TEST_F(PasteboardReadingTest, ReadsOnlyTheTypesOfWhatAnIgnoredApplicationCopies) {
  front->identifier = u"com.example.vault"_s;
  reader.content = u"secret"_s;
  EXPECT_FALSE(snapshot().text);
  EXPECT_EQ(reader.read, QStringList{u"types"_s});
}

TEST_F(PasteboardReadingTest, ReadsWhatCameFromAnotherDeviceWhoeverIsInFront) {
  front->identifier = u"com.example.vault"_s;
  reader.offered = {pasteboardType::remoteClipboard.toString()};
  reader.content = u"hola"_s;
  EXPECT_EQ(snapshot().text, u"hola"_s);
}

TEST_F(PasteboardReadingTest, ReadsNothingOfAnEmptyPasteboard) {
  reader.offered.clear();
  EXPECT_TRUE(snapshot().types.isEmpty());
  EXPECT_EQ(reader.read, QStringList{u"types"_s});
}

TEST_F(PasteboardReadingTest, EndsWithFilesWhereThereAreAny) {
  reader.files = {QUrl(u"file:///a"_s)};
  reader.content = u"/a"_s;
  EXPECT_EQ(snapshot().fileUrls, reader.files);
  EXPECT_EQ(reader.read, (QStringList{u"types"_s, u"files"_s}));
}

TEST_F(PasteboardReadingTest, TakesRtfBeforeHtmlAndNoImageBesideText) {
  reader.content = u"hola"_s;
  reader.bytes = {{u"public.rtf"_s, "r"}, {u"public.html"_s, "h"}, {u"public.png"_s, "p"}};
  const PasteboardSnapshot found = snapshot();
  EXPECT_EQ(found.rtf, "r");
  EXPECT_FALSE(found.html);
  EXPECT_FALSE(found.image);
}

TEST_F(PasteboardReadingTest, TakesHtmlWhereRtfIsMissingEmptyOrTooLarge) {
  reader.content = u"hola"_s;
  for (const auto& rtf : {QByteArray(), QByteArray(11, 'r')}) {
    reader.bytes = {{u"public.rtf"_s, rtf}, {u"public.html"_s, "h"}};
    EXPECT_EQ(snapshot().html, "h");
  }
  reader.bytes.remove(u"public.rtf"_s);
  EXPECT_EQ(snapshot().html, "h");
}

TEST_F(PasteboardReadingTest, LeavesFormatsThatNobodyWants) {
  policy.wantsRichText = false;
  reader.content = u"hola"_s;
  reader.bytes = {{u"public.rtf"_s, "r"}};
  EXPECT_FALSE(snapshot().rtf);
}

TEST_F(PasteboardReadingTest, DoesNotReplaceATextThatIsTooLargeByItsPicture) {
  reader.content = QString(11, u'a');
  reader.bytes = {{u"public.png"_s, "p"}};
  const PasteboardSnapshot found = snapshot();
  EXPECT_TRUE(found.oversized.contains(u"public.utf8-plain-text"_s));
  EXPECT_FALSE(found.text);
  EXPECT_FALSE(found.image);
}

TEST_F(PasteboardReadingTest, TakesTheImageBesideATextOfBlanks) {
  reader.content = u" \n"_s;
  reader.bytes = {{u"public.png"_s, "p"}};
  EXPECT_EQ(snapshot().image, "p");
}

TEST_F(PasteboardReadingTest, TakesTiffWhereThereIsNoPng) {
  reader.bytes = {{u"public.tiff"_s, "t"}};
  EXPECT_EQ(snapshot().image, "t");
  reader.bytes.insert(u"public.png"_s, "p");
  EXPECT_EQ(snapshot().image, "p");
}

TEST_F(PasteboardReadingTest, TakesTiffForAnEmptyPng) {
  reader.bytes = {{u"public.png"_s, QByteArray()}, {u"public.tiff"_s, "t"}};
  EXPECT_EQ(snapshot().image, "t");
}

TEST_F(PasteboardReadingTest, TakesNoTiffForAPngThatIsTooLarge) {
  reader.bytes = {{u"public.png"_s, QByteArray(11, 'p')}, {u"public.tiff"_s, "t"}};
  const PasteboardSnapshot found = snapshot();
  EXPECT_FALSE(found.image);
  EXPECT_TRUE(found.oversized.contains(u"public.png"_s));
}

}  // namespace
}  // namespace nimbrel::macos
