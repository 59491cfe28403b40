#include "platform/linux/preview/PreviewContent.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUuid>

#include "platform/linux/preview/FilePreview.h"
#include "support/Fakes.h"
#include "support/Pictures.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class PreviewContentTest : public ::testing::Test {
 protected:
  QString write(const QString& name, const QByteArray& bytes) {
    QFile file(home.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }
  PreviewContent load(const QString& path) { return loadPreview(path, codec, {}); }

  QTemporaryDir home;
  testing::FakeImageCodec codec;
};

TEST_F(PreviewContentTest, ShowsAText) {
  const auto content = load(write(u"nota.txt"_s, "mañana"));
  EXPECT_EQ(content.title, u"nota.txt");
  const auto& text = std::get<PreviewText>(content.body);
  EXPECT_EQ(text.text, u"mañana");
  EXPECT_FALSE(text.isCut);
}

TEST_F(PreviewContentTest, DoesNotNameAFileThatHasNoName) {
  const auto content = load(write(QUuid::createUuid().toString(QUuid::WithoutBraces) + u".txt"_s, "a"));
  EXPECT_EQ(content.title, QString());
}

TEST_F(PreviewContentTest, ShowsTheBeginningOfALongText) {
  const auto content = load(write(u"largo.txt"_s, QByteArray("línea\n").repeated(100'000)));
  const auto& text = std::get<PreviewText>(content.body);
  EXPECT_TRUE(text.isCut);
  EXPECT_EQ(text.text.size(), kMaxPreviewCharacters);
  EXPECT_TRUE(text.text.startsWith(u"línea\nlínea"));
}

TEST_F(PreviewContentTest, BreaksALineThatIsTooLong) {
  const auto content = load(write(u"linea.txt"_s, QByteArray(40'000, 'x')));
  const auto lines = std::get<PreviewText>(content.body).text.split(u'\n');
  EXPECT_EQ(lines.size(), 10);
}

TEST_F(PreviewContentTest, ShowsATextThatIsNoUtf8) {
  const auto content = load(write(u"viejo.txt"_s,
                                  "ma\xf1"
                                  "ana"));
  EXPECT_EQ(std::get<PreviewText>(content.body).text, u"mañana");
}

TEST_F(PreviewContentTest, ShowsAPicture) {
  const auto content =
      load(write(u"foto.png"_s, testing::encoded(testing::noisePicture(QSize(8, 8)), "png")));
  EXPECT_TRUE(std::holds_alternative<PreviewPicture>(content.body));
}

TEST_F(PreviewContentTest, TellsOfAPictureThatCannotBeDecodedWhatItIs) {
  codec.error = u"dañada"_s;
  const auto content =
      load(write(u"foto.png"_s, testing::encoded(testing::noisePicture(QSize(8, 8)), "png")));
  const auto& facts = std::get<PreviewFacts>(content.body);
  EXPECT_EQ(facts.name, u"foto.png");
  EXPECT_GT(facts.size, 0);
}

TEST_F(PreviewContentTest, TellsOfOtherFilesWhatTheyAre) {
  const auto content = load(write(u"datos.zip"_s, QByteArray("PK\3\4", 4)));
  const auto& facts = std::get<PreviewFacts>(content.body);
  EXPECT_EQ(facts.size, 4);
  EXPECT_FALSE(facts.type.isEmpty());
}

TEST_F(PreviewContentTest, TellsOfAFolderHowMuchIsInIt) {
  write(u"a"_s, "1");
  write(u".b"_s, "2");
  const auto content = load(home.path());
  const auto& facts = std::get<PreviewFacts>(content.body);
  EXPECT_TRUE(facts.isFolder);
}

TEST_F(PreviewContentTest, OpensNothingThatCouldWaitForEver) {
  const QString pipe = home.filePath(u"tubo.txt"_s);
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  EXPECT_TRUE(std::holds_alternative<PreviewFacts>(load(pipe).body));
  EXPECT_TRUE(std::holds_alternative<PreviewFacts>(load(u"/dev/zero"_s).body));
}

TEST_F(PreviewContentTest, HasNothingOfAFileThatIsGone) {
  EXPECT_TRUE(std::holds_alternative<PreviewNothing>(load(home.filePath(u"no"_s)).body));
}

}  // namespace
}  // namespace nimbrel
