#include "platform/linux/DesktopFile.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class DesktopFileTest : public ::testing::Test {
 protected:
  std::optional<DesktopFile> read(const QByteArray& content) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    return DesktopFile::read(path);
  }

  QTemporaryDir folder;
  QString path = folder.filePath(u"a.desktop"_s);
};

TEST_F(DesktopFileTest, HasTheValuesOfItsMainGroupOnly) {
  const auto file = read(
      "# x\n[Other]\nName=No\n[Desktop Entry]\nName = Sí \n#Icon=no\nname=x\n=y\nName=2\n"
      "[Desktop Action x]\nIcon=No\n");
  ASSERT_TRUE(file);
  EXPECT_EQ(file->value(u"Name"_s), u"Sí");
  EXPECT_EQ(file->value(u"Icon"_s), QString());
}

TEST_F(DesktopFileTest, PrefersTheUsersLanguage) {
  const auto file = read("[Desktop Entry]\nName=Files\nName[es]=Archivos\nName[es_MX]=Carpetas\n");
  EXPECT_EQ(file->localValue(u"Name"_s, u"es_ES"_s), u"Archivos");
  EXPECT_EQ(file->localValue(u"Name"_s, u"es_MX"_s), u"Carpetas");
  EXPECT_EQ(file->localValue(u"Name"_s, u"fr_FR"_s), u"Files");
  EXPECT_EQ(file->localValue(u"Name"_s, QString()), u"Files");
}

TEST_F(DesktopFileTest, UndoesEscapes) {
  EXPECT_EQ(read("[Desktop Entry]\nName=a\\sb\\nc\\td\\\\e\\qf\\\n")->value(u"Name"_s), u"a b\nc\td\\eqf\\");
}

TEST_F(DesktopFileTest, IsNoneWithoutAMainGroup) {
  EXPECT_FALSE(read(""));
  EXPECT_FALSE(read("Name=a\n[Other]\n"));
  EXPECT_FALSE(read(QByteArray(500'000, '\xff')));
  EXPECT_FALSE(DesktopFile::read(folder.path()));
  EXPECT_FALSE(DesktopFile::read(folder.filePath(u"missing"_s)));
}

TEST_F(DesktopFileTest, IsNotReadFromAPipe) {
  ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
  EXPECT_FALSE(DesktopFile::read(path));
}

TEST_F(DesktopFileTest, NamesTheProgramOfACommand) {
  EXPECT_EQ(programOf(u"/usr/bin/kate -b %U"_s), u"kate");
  EXPECT_EQ(programOf(u"kate"_s), u"kate");
  EXPECT_EQ(programOf(u"\"/opt/my apps/kate\" %U"_s), u"kate");
  EXPECT_EQ(programOf(QString()), QString());
  EXPECT_EQ(programOf(u"\""_s), QString());
}

TEST_F(DesktopFileTest, QuotesAProgramForExec) {
  EXPECT_EQ(execValue(u"/usr/bin/nimbrel"_s), u"\"/usr/bin/nimbrel\"");
  EXPECT_EQ(execValue(u"/a b/\"`$\\%"_s), u"\"/a b/\\\\\"\\\\`\\\\$\\\\\\\\%%\"");
}

}  // namespace
}  // namespace nimbrel
