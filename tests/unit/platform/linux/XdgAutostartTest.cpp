#include "platform/linux/XdgAutostart.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class XdgAutostartTest : public ::testing::Test {
 protected:
  static void write(const QString& path, const QByteArray& content) {
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  [[nodiscard]] QByteArray content() const {
    QFile file(user);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder;
  QString user = folder.filePath(u"config/autostart/app.nimbrel.Nimbrel.desktop"_s);
  QString system = folder.filePath(u"xdg/autostart/app.nimbrel.Nimbrel.desktop"_s);
  XdgAutostart login{folder.filePath(u"config"_s), {folder.filePath(u"xdg"_s)}, u"/opt/a b/nimbrel"_s};
};

TEST_F(XdgAutostartTest, SwitchesOnAndOff) {
  EXPECT_FALSE(login.isEnabled());
  EXPECT_EQ(login.setEnabled(false), std::nullopt);
  EXPECT_EQ(login.setEnabled(true), std::nullopt);
  EXPECT_TRUE(login.isEnabled());
  EXPECT_THAT(content().toStdString(), ::testing::HasSubstr("\nExec=\"/opt/a b/nimbrel\"\n"));
  EXPECT_EQ(login.setEnabled(true), std::nullopt);
  EXPECT_EQ(login.setEnabled(false), std::nullopt);
  EXPECT_FALSE(login.isEnabled());
  EXPECT_FALSE(QFile::exists(user));
}

TEST_F(XdgAutostartTest, ReadsWhatOthersHaveWritten) {
  write(user, "[Desktop Entry]\nType=Application\nExec=nimbrel\n");
  EXPECT_TRUE(login.isEnabled());
  write(user, "[Desktop Entry]\nType=Application\nExec=nimbrel\nX-GNOME-Autostart-enabled=false\n");
  EXPECT_FALSE(login.isEnabled());
  EXPECT_EQ(login.setEnabled(true), std::nullopt);
  EXPECT_TRUE(login.isEnabled());
  write(user, "[Desktop Entry]\nHidden=true\n");
  EXPECT_FALSE(login.isEnabled());
}

TEST_F(XdgAutostartTest, SwitchesOffWhatStartsForEverybody) {
  write(system, "[Desktop Entry]\nType=Application\nExec=nimbrel\n");
  EXPECT_TRUE(login.isEnabled());
  EXPECT_EQ(login.setEnabled(false), std::nullopt);
  EXPECT_FALSE(login.isEnabled());
  EXPECT_EQ(login.setEnabled(true), std::nullopt);
  EXPECT_TRUE(login.isEnabled());
}

TEST_F(XdgAutostartTest, SaysWhatWentWrong) {
  write(folder.filePath(u"config"_s), "a file in the folder's place");
  EXPECT_NE(login.setEnabled(true), std::nullopt);
  EXPECT_FALSE(login.isEnabled());
}

TEST_F(XdgAutostartTest, AFolderInTheFilesPlaceIsAFailure) {
  ASSERT_TRUE(QDir().mkpath(user + u"/x"_s));
  EXPECT_FALSE(login.isEnabled());
  EXPECT_NE(login.setEnabled(true), std::nullopt);
  EXPECT_NE(login.setEnabled(false), std::nullopt);
}

}  // namespace
}  // namespace nimbrel
