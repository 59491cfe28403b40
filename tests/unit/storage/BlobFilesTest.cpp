#include "storage/BlobFiles.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "storage/StorageDirectory.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class BlobFilesTest : public ::testing::Test {
 protected:
  [[nodiscard]] QString image(const QString& name) const { return directory + u"/Images/"_s + name; }
  [[nodiscard]] QString rich(const QString& name) const { return directory + u"/Rich/"_s + name; }
  [[nodiscard]] static QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  /// A file that was last changed so long ago.
  void old(const QString& path, std::chrono::seconds age) const {
    write(path, "x");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const auto moment =
        std::chrono::duration_cast<std::chrono::milliseconds>((clock.wall - age).time_since_epoch());
    ASSERT_TRUE(
        file.setFileTime(QDateTime::fromMSecsSinceEpoch(moment.count()), QFileDevice::FileModificationTime));
  }

  testing::LogRecorder log;
  QTemporaryDir home;
  QString directory = makeStorageDirectory(home.path());
  testing::ManualClock clock;
  testing::FakeSecretStore secrets;
  SystemRandom random;
  HistoryCipher cipher{secrets, random};
  BlobFiles files{directory, cipher, clock};
};

TEST_F(BlobFilesTest, WritesSealedFilesForTheirOwnerAlone) {
  ASSERT_TRUE(files.saveImage("pixels", u"A.png"_s));
  ASSERT_TRUE(files.saveRich("{\\rtf1}", u"B.rtf"_s));
  for (const QString& path : {image(u"A.png"_s), rich(u"B.rtf"_s)}) {
    EXPECT_TRUE(content(path).startsWith("BRVN1"));
    EXPECT_EQ(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup), 0);
  }
  EXPECT_EQ(files.loadImageData(u"A.png"_s), "pixels");
  EXPECT_EQ(files.loadRichData(u"B.rtf"_s), "{\\rtf1}");
}

TEST_F(BlobFilesTest, WithoutAKeyWritesPlainBytesThatStayReadable) {
  secrets.findStatus = -1;
  ASSERT_TRUE(files.saveImage("pixels", u"A.png"_s));
  EXPECT_EQ(content(image(u"A.png"_s)), "pixels");
  testing::FakeSecretStore working;
  HistoryCipher withKey(working, random);
  ASSERT_TRUE(withKey.hasKey());
  EXPECT_EQ(BlobFiles(directory, withKey, clock).loadImageData(u"A.png"_s), "pixels");
}

TEST_F(BlobFilesTest, ASealedFileWhoseKeyIsGoneIsNothing) {
  ASSERT_TRUE(files.saveImage("pixels", u"A.png"_s));
  testing::FakeSecretStore other;
  HistoryCipher otherKey(other, random);
  EXPECT_FALSE(BlobFiles(directory, otherKey, clock).loadImageData(u"A.png"_s));
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(BlobFilesTest, MissingAndDamagedFilesAreNothing) {
  EXPECT_FALSE(files.loadImageData(u"A.png"_s));
  write(image(u"B.png"_s), "BRVN1short");
  EXPECT_FALSE(files.loadImageData(u"B.png"_s));
}

TEST_F(BlobFilesTest, NamesFromElsewhereLeadNowhere) {
  write(home.filePath(u"secret"_s), "x");
  for (const QString& name :
       {u"../../secret"_s, home.filePath(u"secret"_s), u".."_s, u"."_s, QString(), u"../brevin.sqlite"_s}) {
    EXPECT_FALSE(files.loadImageData(name)) << name.toStdString();
    files.removeImage(name);
    files.removeRich(name);
  }
  EXPECT_EQ(content(home.filePath(u"secret"_s)), "x");
}

TEST_F(BlobFilesTest, WhatIsNoRegularFileIsNotOpened) {
  ASSERT_EQ(mkfifo(QFile::encodeName(image(u"pipe.png"_s)).constData(), 0600), 0);
  EXPECT_FALSE(files.loadImageData(u"pipe.png"_s));
  write(home.filePath(u"elsewhere"_s), "x");
  ASSERT_TRUE(QFile::link(home.filePath(u"elsewhere"_s), image(u"link.png"_s)));
  EXPECT_FALSE(files.loadImageData(u"link.png"_s));
}

TEST_F(BlobFilesTest, AFailingWriteIsLoggedAndLeavesNothingBehind) {
  ASSERT_TRUE(QDir(directory + u"/Images"_s).removeRecursively());
  ASSERT_TRUE(QDir(directory + u"/Rich"_s).removeRecursively());
  EXPECT_FALSE(files.saveImage("pixels", u"A.png"_s));
  EXPECT_FALSE(files.saveRich("text", u"A.rtf"_s));
  EXPECT_TRUE(log.has(u"No se pudo guardar la imagen: "_s));
  EXPECT_TRUE(log.has(u"No se pudo guardar el formato: "_s));
}

TEST_F(BlobFilesTest, RemovesWhatItIsToldAndIgnoresErrors) {
  ASSERT_TRUE(files.saveImage("pixels", u"A.png"_s));
  files.removeImage(u"A.png"_s);
  files.removeImage(u"A.png"_s);
  EXPECT_FALSE(QFileInfo::exists(image(u"A.png"_s)));
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(BlobFilesTest, TheSweepDeletesOldFilesThatNoRowRefersTo) {
  old(image(u"kept.png"_s), 100h);
  old(image(u"young.png"_s), 5min);
  old(image(u"orphan.png"_s), 11min);
  old(image(u"half-written.png.Xy12ab"_s), 24h);
  ASSERT_TRUE(QDir(directory).mkpath(u"Images/folder"_s));
  files.sweepOrphanImages(QSet<QString>{u"kept.png"_s});
  EXPECT_TRUE(QFileInfo::exists(image(u"kept.png"_s)));
  EXPECT_TRUE(QFileInfo::exists(image(u"young.png"_s)));
  EXPECT_FALSE(QFileInfo::exists(image(u"orphan.png"_s)));
  EXPECT_FALSE(QFileInfo::exists(image(u"half-written.png.Xy12ab"_s)));
  EXPECT_TRUE(QFileInfo(image(u"folder"_s)).isDir());
  EXPECT_EQ(log.lines(), QStringList{u"Imágenes huérfanas borradas: 2"_s});
}

TEST_F(BlobFilesTest, TheSweepKeepsAFileOfExactlyTenMinutes) {
  old(image(u"edge.png"_s), 600s);
  files.sweepOrphanImages(QSet<QString>());
  EXPECT_TRUE(QFileInfo::exists(image(u"edge.png"_s)));
}

TEST_F(BlobFilesTest, TheSweepOfFormatsHasItsOwnWords) {
  old(rich(u"orphan.rtf"_s), 11min);
  files.sweepOrphanRichFiles(QSet<QString>());
  EXPECT_FALSE(QFileInfo::exists(rich(u"orphan.rtf"_s)));
  EXPECT_EQ(log.lines(), QStringList{u"Archivos de formato huérfanos borrados: 1"_s});
}

TEST_F(BlobFilesTest, TheSweepDeletesNothingWhenTheRowsCannotBeRead) {
  old(image(u"orphan.png"_s), 11min);
  old(rich(u"orphan.rtf"_s), 11min);
  files.sweepOrphanImages(std::nullopt);
  files.sweepOrphanRichFiles(std::nullopt);
  EXPECT_TRUE(QFileInfo::exists(image(u"orphan.png"_s)));
  EXPECT_TRUE(QFileInfo::exists(rich(u"orphan.rtf"_s)));
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(BlobFilesTest, TheSweepOfAMissingFolderDeletesNothing) {
  ASSERT_TRUE(QDir(directory + u"/Images"_s).removeRecursively());
  files.sweepOrphanImages(QSet<QString>());
  EXPECT_TRUE(log.lines().isEmpty());
}

}  // namespace
}  // namespace nimbrel
