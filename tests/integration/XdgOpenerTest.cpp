#include "platform/linux/XdgOpener.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// A file manager on the bus.
class FileManager final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

 public:
  QStringList shown;

 public Q_SLOTS:
  // The name is the bus's.
  void ShowItems(const QStringList& uris, const QString&) { shown += uris; }  // NOLINT
};

class XdgOpenerTest : public ::testing::Test {
 protected:
  ~XdgOpenerTest() override { qputenv("PATH", path_); }

  /// Installs a program that notes what it is started with, before all others.
  void install(const QString& name) {
    QFile program(folder_.filePath(name));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho \"$(basename \"$0\") $*\" >> '" + started_.toUtf8() + "'\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    qputenv("PATH", folder_.path().toUtf8() + ':' + path_);
  }
  void uninstallAll() { qputenv("PATH", folder_.path().toUtf8()); }
  QString started() {
    QFile log(started_);
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()).trimmed() : QString();
  }
  bool starts(const QString& line) {
    return QTest::qWaitFor([&] { return started() == line; });
  }

  XdgOpener opener;

 private:
  QTemporaryDir folder_;
  QString started_ = folder_.filePath(u"started"_s);
  QByteArray path_ = qgetenv("PATH");
};

TEST_F(XdgOpenerTest, OpensALinkWithTheDesktopsProgram) {
  install(u"xdg-open"_s);
  EXPECT_TRUE(opener.openUrl(QUrl(u"https://example.org/a?b=c"_s)));
  EXPECT_TRUE(starts(u"xdg-open https://example.org/a?b=c"_s)) << started().toStdString();
}

TEST_F(XdgOpenerTest, OpensTheFirstKeyStoreProgramThatThereIs) {
  install(u"kwalletmanager5"_s);
  install(u"seahorse"_s);
  EXPECT_TRUE(opener.openKeyStore());
  EXPECT_TRUE(starts(u"seahorse"_s)) << started().toStdString();
}

TEST_F(XdgOpenerTest, SaysThatThereIsNothingToOpenItWith) {
  uninstallAll();
  EXPECT_FALSE(opener.openKeyStore());
  EXPECT_FALSE(opener.openPrivacySettings());
  EXPECT_FALSE(opener.reveal({}));
}

TEST_F(XdgOpenerTest, ShowsFilesInTheFileManager) {
  FileManager manager;
  QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"file-manager"_s);
  ASSERT_TRUE(bus.registerService(u"org.freedesktop.FileManager1"_s));
  ASSERT_TRUE(
      bus.registerObject(u"/org/freedesktop/FileManager1"_s, &manager, QDBusConnection::ExportAllSlots));
  EXPECT_TRUE(opener.reveal({QUrl::fromLocalFile(u"/tmp/a b.txt"_s), QUrl::fromLocalFile(u"/tmp/ñ"_s)}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !manager.shown.isEmpty(); }));
  EXPECT_THAT(manager.shown, ::testing::ElementsAre(u"file:///tmp/a%20b.txt"_s, u"file:///tmp/%C3%B1"_s));
  bus.unregisterService(u"org.freedesktop.FileManager1"_s);
  QDBusConnection::disconnectFromBus(u"file-manager"_s);
}

TEST_F(XdgOpenerTest, OpensTheFolderWhereThereIsNoFileManagerOnTheBus) {
  install(u"xdg-open"_s);
  EXPECT_TRUE(opener.reveal({QUrl::fromLocalFile(u"/usr/share/a.txt"_s)}));
  EXPECT_TRUE(starts(u"xdg-open file:///usr/share"_s)) << started().toStdString();
}

}  // namespace
}  // namespace nimbrel

#include "XdgOpenerTest.moc"
