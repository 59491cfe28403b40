#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "durability/RealHistory.h"
#include "platform/PasteboardTypes.h"
#include "platform/linux/JsonUserDefaults.h"
#include "support/LogRecorder.h"

namespace nimbrel::testing {
namespace {

using namespace Qt::StringLiterals;

void writeTo(const char* path, const QByteArray& text) {
  const int file = open(path, O_WRONLY | O_CLOEXEC);
  if (file < 0) return;
  [[maybe_unused]] const auto written = write(file, text.constData(), static_cast<size_t>(text.size()));
  close(file);
}

/// Mounts of our own, as root or as a user who may be root in a world of his own.
bool enterMountNamespace() {
  const uid_t user = getuid();
  if (unshare(CLONE_NEWNS) != 0) {
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    writeTo("/proc/self/setgroups", "deny");
    writeTo("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1");
  }
  return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool canMount = false;

/// A history on a disk of one megabyte.
class FullDisk : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!canMount) GTEST_SKIP() << "this machine lets nobody mount a small disk";
    ASSERT_EQ(mount("tmpfs", QFile::encodeName(folder.path()).constData(), "tmpfs", 0, "size=1m"), 0);
    history = std::make_unique<RealHistory>(folder.path());
  }
  void TearDown() override {
    history.reset();
    if (canMount) umount2(QFile::encodeName(folder.path()).constData(), MNT_DETACH);
  }
  void copyText(const QString& text) {
    PasteboardSnapshot snapshot;
    snapshot.types = {pasteboardType::plainText.toString()};
    snapshot.text = text;
    copy(snapshot);
  }
  void copy(const PasteboardSnapshot& snapshot) {
    history->pasteboard.copy(snapshot);
    history->store->tick();
    settle();
  }
  void settle() {
    history->files->finish();
    history->database->flush();
  }
  /// Takes all the room that is left.
  void fill() {
    QFile file(filler());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (qint64 piece = 1 << 16; piece > 0; piece /= 2) {
      while (file.write(QByteArray(piece, 'x')) == piece) {
      }
    }
  }
  [[nodiscard]] QString filler() const { return folder.filePath(u"filler"_s); }

  LogRecorder log;
  QTemporaryDir folder;
  std::unique_ptr<RealHistory> history;
};

TEST_F(FullDisk, KeepsTheHistoryInMemoryAndSavesItOnceThereIsRoom) {
  copyText(u"antes"_s);
  fill();
  for (int i = 0; i < 20; ++i)
    copyText(u"durante %1 "_s.arg(i) + QString(5000, u'x'));
  EXPECT_EQ(history->store->items().size(), 21);
  EXPECT_TRUE(log.has(u"No se pudo guardar: SQLite 13: "_s)) << log.lines().join(u'\n').toStdString();
  EXPECT_LT(history->database->count(), 21);
  ASSERT_TRUE(QFile::remove(filler()));
  history->database->retryFailedWrites();
  EXPECT_EQ(history->database->count(), 21);
}

TEST_F(FullDisk, AnImageThatDoesNotFitIsLoggedAndLeavesNothingBehind) {
  fill();
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::png.toString()};
  snapshot.image = QByteArray(100'000, 'p');
  copy(snapshot);
  EXPECT_TRUE(log.has(u"No se pudo guardar la imagen: "_s));
  EXPECT_EQ(history->store->items().size(), 0);
  EXPECT_TRUE(QDir(history->directory + u"/Images"_s).isEmpty(QDir::Files));
}

TEST_F(FullDisk, AFormatThatDoesNotFitLeavesThePlainText) {
  copyText(u"antes"_s);
  fill();
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::plainText.toString(), pasteboardType::rtf.toString()};
  snapshot.text = u"con formato"_s;
  snapshot.rtf = QByteArray(100'000, 'r');
  copy(snapshot);
  EXPECT_TRUE(log.has(u"No se pudo guardar el formato: "_s));
  ASSERT_EQ(history->store->items().size(), 2);
  EXPECT_FALSE(history->store->items().at(0)->clip.richFile);
}

TEST_F(FullDisk, ASmallFormatThatDoesNotFitIsNoEmptyFile) {
  copyText(u"antes"_s);
  fill();
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::plainText.toString(), pasteboardType::rtf.toString()};
  snapshot.text = u"con formato"_s;
  // So small that it waits in a buffer until the file takes its place.
  snapshot.rtf = "{rtf}";
  copy(snapshot);
  EXPECT_TRUE(log.has(u"No se pudo guardar el formato: "_s));
  EXPECT_FALSE(history->store->items().at(0)->clip.richFile);
  EXPECT_TRUE(QDir(history->directory + u"/Rich"_s).isEmpty(QDir::Files));
}

TEST_F(FullDisk, SettingsThatDoNotFitLeaveTheStoredOnes) {
  const QString path = folder.filePath(u"config/defaults.json"_s);
  {
    JsonUserDefaults defaults(path);
    defaults.set(u"maxUnpinned"_s, qint64{50});
    defaults.synchronize();
  }
  fill();
  {
    JsonUserDefaults defaults(path);
    defaults.set(u"maxUnpinned"_s, qint64{25});
    for (int i = 0; i < 3; ++i)
      defaults.synchronize();
  }
  EXPECT_TRUE(log.has(u"No se pudieron guardar los ajustes: "_s));
  EXPECT_EQ(JsonUserDefaults(path).value(u"maxUnpinned"_s), DefaultsValue(qint64{50}));
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
  }
  {
    JsonUserDefaults defaults(path);
    for (int i = 0; i < 3; ++i) {
      defaults.set(u"maxUnpinned"_s, qint64{i});
      defaults.synchronize();
    }
  }
  EXPECT_LE(QDir(folder.filePath(u"config"_s)).entryList({u"*.damaged*"_s}).size(), 1);
}

}  // namespace
}  // namespace nimbrel::testing

int main(int argc, char** argv) {
  // Before there is a second thread, which would keep the process where it is.
  nimbrel::testing::canMount = nimbrel::testing::enterMountNamespace();
  ::testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
