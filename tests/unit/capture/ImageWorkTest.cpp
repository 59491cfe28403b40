#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

#include "capture/ClipFiles.h"
#include "capture/ImageTextReader.h"
#include "capture/Thumbnails.h"
#include "storage/ContentHash.h"
#include "storage/StorageDirectory.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace testing;

/// Runs the event loop until something holds; the limit only keeps a failing test from hanging.
template <typename Condition>
bool waitUntil(Condition&& condition) {
  QElapsedTimer timer;
  timer.start();
  while (!condition() && timer.elapsed() < 20'000)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  return condition();
}

class ClipFilesTest : public ::testing::Test {
 protected:
  LogRecorder log;
  QTemporaryDir home;
  QString directory = makeStorageDirectory(home.path());
  ManualClock clock;
  FakeSecretStore secrets;
  SystemRandom random;
  HistoryCipher cipher{secrets, random};
  BlobFiles blobs{directory, cipher, clock};
  FakeImageCodec codec;
};

TEST_F(ClipFilesTest, StoresAnImageWithItsHashUnderANewName) {
  ClipFiles files(blobs, codec);
  std::optional<PreparedImage> prepared;
  std::optional<QString> name;
  files.prepareImage("png", [&](const auto& image) {
    prepared = image;
    files.storeImage(*image, [&](const auto& stored) { name = stored; });
  });
  files.finish();
  ASSERT_TRUE(prepared && name);
  EXPECT_EQ(prepared->hash, sha256Hex("png"));
  EXPECT_EQ(prepared->thumbnail.width(), kThumbnailPixels);
  EXPECT_TRUE(name->endsWith(u".png"));
  EXPECT_EQ(name->left(36), name->left(36).toUpper());
  EXPECT_EQ(files.loadImage(*name), "png");
}

TEST_F(ClipFilesTest, StoresAFormatUnderItsExtensionAndRemovesIt) {
  ClipFiles files(blobs, codec);
  std::optional<QString> name;
  files.storeRich({"<b>", u"html"_s, {}}, [&](const auto& stored) { name = stored; });
  files.finish();
  ASSERT_TRUE(name);
  EXPECT_TRUE(name->endsWith(u".html"));
  EXPECT_EQ(files.loadRich(*name), "<b>");
  files.remove({.images = {}, .rich = {*name}});
  files.finish();
  EXPECT_FALSE(files.loadRich(*name));
}

TEST_F(ClipFilesTest, AnImageThatIsRefusedIsLogged) {
  ClipFiles files(blobs, codec);
  codec.error = u"la imagen es demasiado grande"_s;
  bool told = false;
  files.prepareImage("bomb", [&](const auto& image) { told = !image; });
  files.finish();
  EXPECT_TRUE(told);
  EXPECT_EQ(log.lines(), QStringList{u"No se pudo guardar la imagen: la imagen es demasiado grande"_s});
}

TEST_F(ClipFilesTest, MoreImagesThanMemoryShouldHoldAreRefusedAndLogged) {
  ClipFiles files(blobs, codec);
  codec.slow = true;
  int kept = 0;
  int refused = 0;
  const QByteArray large(20'000'000, 'p');
  for (int i = 0; i < 10; ++i)
    files.prepareImage(large, [&](const auto& image) { ++(image ? kept : refused); });
  codec.slow = false;
  files.finish();
  EXPECT_EQ(kept + refused, 10);
  EXPECT_GE(kept, 6);
  EXPECT_GE(refused, 1);
  EXPECT_TRUE(log.has(u"No se pudo guardar la imagen: demasiadas imágenes a la vez"_s));
}

TEST_F(ClipFilesTest, TheEndGivesUpASlowImageAndKeepsTheOthers) {
  ClipFiles files(blobs, codec);
  codec.endless.insert("slow");
  QStringList kept;
  for (const char* const bytes : {"slow", "one", "two"}) {
    files.prepareImage(bytes, [&](const auto& image) {
      if (image) kept.append(QString::fromLatin1(image->png));
    });
  }
  files.finish(std::chrono::milliseconds(50));
  EXPECT_EQ(kept, (QStringList{u"one"_s, u"two"_s}));
  EXPECT_EQ(log.lines(), QStringList{u"No se pudo guardar la imagen: se perdió al cerrar"_s});
}

TEST_F(ClipFilesTest, SweepsWithWhatTheDatabaseRefersTo) {
  ClipDatabase database(databasePath(directory), cipher);
  ClipItem clip;
  clip.id = QUuid::createUuid();
  clip.imageFile = u"kept.png"_s;
  database.save(std::make_shared<const IndexedClip>(clip));
  ASSERT_TRUE(blobs.saveImage("x", u"kept.png"_s));
  ASSERT_TRUE(blobs.saveImage("x", u"used.png"_s));
  ASSERT_TRUE(blobs.saveImage("x", u"orphan.png"_s));
  // The files were written by the real clock.
  clock.wall = std::chrono::system_clock::now() + std::chrono::hours(1);
  ClipFiles files(blobs, codec);
  files.sweepOrphans(database, {.images = {u"used.png"_s}, .rich = {}});
  files.finish();
  EXPECT_TRUE(blobs.loadImageData(u"kept.png"_s));
  EXPECT_TRUE(blobs.loadImageData(u"used.png"_s));
  EXPECT_FALSE(blobs.loadImageData(u"orphan.png"_s));
}

TEST_F(ClipFilesTest, WithoutADatabaseTheSweepDeletesNothing) {
  ClipDatabase database(home.filePath(u"missing/brevin.sqlite"_s), cipher);
  ASSERT_TRUE(blobs.saveImage("x", u"orphan.png"_s));
  clock.wall = std::chrono::system_clock::now() + std::chrono::hours(1);
  ClipFiles files(blobs, codec);
  files.sweepOrphans(database, {});
  files.finish();
  EXPECT_TRUE(blobs.loadImageData(u"orphan.png"_s));
}

class ThumbnailsTest : public ::testing::Test {
 protected:
  FakeSideFiles files;
  FakeImageCodec codec;
};

TEST_F(ThumbnailsTest, AreMadeOnceAndDeliveredLater) {
  files.images.insert(u"A.png"_s, "png");
  Thumbnails thumbnails(files, codec);
  const QSignalSpy ready(&thumbnails, &Thumbnails::ready);
  EXPECT_TRUE(thumbnails.thumbnail(u"A.png"_s).isNull());
  EXPECT_TRUE(thumbnails.thumbnail(u"A.png"_s).isNull());
  ASSERT_TRUE(waitUntil([&] { return ready.count() == 1; }));
  EXPECT_EQ(ready.at(0).at(0).toString(), u"A.png"_s);
  EXPECT_EQ(thumbnails.thumbnail(u"A.png"_s).width(), kThumbnailPixels);
  EXPECT_EQ(codec.thumbnails, 1);
}

TEST_F(ThumbnailsTest, ThatCannotBeMadeAreNotTriedAgain) {
  files.images.insert(u"broken.png"_s, "x");
  files.images.insert(u"good.png"_s, "x");
  codec.error = u"rota"_s;
  LogRecorder log;
  Thumbnails thumbnails(files, codec);
  static_cast<void>(thumbnails.thumbnail(u"missing.png"_s));
  static_cast<void>(thumbnails.thumbnail(u"broken.png"_s));
  ASSERT_TRUE(waitUntil([&] { return codec.thumbnails == 1; }));
  static_cast<void>(thumbnails.thumbnail(u"missing.png"_s));
  EXPECT_TRUE(thumbnails.thumbnail(u"broken.png"_s).isNull());
  static_cast<void>(thumbnails.thumbnail(u"good.png"_s));
  ASSERT_TRUE(waitUntil([&] { return codec.thumbnails == 2; }));
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(ThumbnailsTest, StayWithinAHundredAndTwentyFiveMegabytes) {
  Thumbnails thumbnails(files, codec);
  const QImage small(10, 10, QImage::Format_RGB32);
  for (int i = 0; i < 150; ++i)
    thumbnails.insert(QString::number(i), small);
  int kept = 0;
  for (int i = 0; i < 150; ++i)
    kept += thumbnails.thumbnail(QString::number(i)).isNull() ? 0 : 1;
  EXPECT_EQ(kept, 100);
  const QImage large(1000, 1000, QImage::Format_RGB32);
  for (int i = 0; i < 20; ++i)
    thumbnails.insert(u"large%1"_s.arg(i), large);
  int keptLarge = 0;
  for (int i = 0; i < 20; ++i)
    keptLarge += thumbnails.thumbnail(u"large%1"_s.arg(i)).isNull() ? 0 : 1;
  EXPECT_EQ(keptLarge, 6);
}

class ImageTextReaderTest : public ::testing::Test {
 protected:
  ImageTextReaderTest() {
    for (const auto* name : {u"A.png", u"B.png", u"C.png"}) {
      const QString file = QString::fromUtf16(name);
      files.images.insert(file, file.toUtf8());
      recognizer.lines.insert(file.toUtf8(), {{u"text of "_s + file, QRectF(0, 0, 1, 1)}});
    }
  }
  void listen(ImageTextReader& reader) {
    reader.setHandler([this](const QUuid& id, const QString& text) {
      ids.append(id);
      texts.append(text);
    });
  }

  LogRecorder log;
  FakeSideFiles files;
  FakeTextRecognizer recognizer;
  QList<QUuid> ids;
  QStringList texts;
  const QUuid a = QUuid::createUuid();
  const QUuid b = QUuid::createUuid();
  const QUuid c = QUuid::createUuid();
};

TEST_F(ImageTextReaderTest, ReadsOneImageAfterTheOtherAndEachOnce) {
  ImageTextReader reader(files, recognizer);
  listen(reader);
  reader.enqueue(a, u"A.png"_s);
  reader.enqueue(b, u"B.png"_s);
  reader.enqueue(a, u"A.png"_s);
  EXPECT_EQ(reader.pendingCount(), 2);
  ASSERT_TRUE(waitUntil([&] { return reader.pendingCount() == 0; }));
  EXPECT_EQ(ids, (QList<QUuid>{a, b}));
  EXPECT_EQ(texts, (QStringList{u"text of A.png"_s, u"text of B.png"_s}));
}

TEST_F(ImageTextReaderTest, AFailureIsLoggedAndNotTriedAgain) {
  recognizer.error = u"se rompió"_s;
  ImageTextReader reader(files, recognizer);
  listen(reader);
  reader.enqueue(a, u"A.png"_s);
  ASSERT_TRUE(waitUntil([&] { return reader.pendingCount() == 0; }));
  EXPECT_EQ(log.lines(), QStringList{u"OCR: se rompió"_s});
  EXPECT_TRUE(ids.isEmpty());
  EXPECT_EQ(recognizer.calls, 1);
}

TEST_F(ImageTextReaderTest, AMissingFileHoldsUpNothing) {
  ImageTextReader reader(files, recognizer);
  listen(reader);
  reader.enqueue(a, u"gone.png"_s);
  reader.enqueue(b, u"B.png"_s);
  ASSERT_TRUE(waitUntil([&] { return reader.pendingCount() == 0; }));
  EXPECT_EQ(ids, QList<QUuid>{b});
}

TEST_F(ImageTextReaderTest, ACancelledImageIsForgottenWhetherItWaitsOrIsBeingRead) {
  recognizer.endless = true;
  ImageTextReader reader(files, recognizer);
  listen(reader);
  reader.enqueue(a, u"A.png"_s);
  reader.enqueue(b, u"B.png"_s);
  reader.enqueue(c, u"C.png"_s);
  ASSERT_TRUE(waitUntil([&] { return recognizer.calls == 1; }));
  reader.cancel(b);
  reader.cancel(a);
  recognizer.endless = false;
  ASSERT_TRUE(waitUntil([&] { return reader.pendingCount() == 0; }));
  EXPECT_EQ(ids, QList<QUuid>{c});
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(ImageTextReaderTest, WhatIsQueuedAgainAfterAllWasCancelledIsRead) {
  recognizer.endless = true;
  ImageTextReader reader(files, recognizer);
  listen(reader);
  QList<QUuid> pending;
  reader.setPendingHandler([&](const auto& waiting) { pending = waiting; });
  reader.enqueue(a, u"A.png"_s);
  reader.enqueue(b, u"B.png"_s);
  ASSERT_TRUE(waitUntil([&] { return recognizer.calls == 1; }));
  reader.cancelAll();
  EXPECT_TRUE(pending.isEmpty());
  recognizer.endless = false;
  reader.enqueue(a, u"A.png"_s);
  ASSERT_TRUE(waitUntil([&] { return reader.pendingCount() == 0; }));
  EXPECT_EQ(ids, QList<QUuid>{a});
}

TEST_F(ImageTextReaderTest, EndingDoesNotWaitForAPictureThatNeverEnds) {
  recognizer.endless = true;
  {
    ImageTextReader reader(files, recognizer);
    listen(reader);
    reader.enqueue(a, u"A.png"_s);
    ASSERT_TRUE(waitUntil([&] { return recognizer.calls == 1; }));
  }
  EXPECT_TRUE(ids.isEmpty());
}

TEST(JoinedLines, PutTheTopmostFirstAndKeepTheOrderOfEqualHeights) {
  EXPECT_EQ(joinedLines({{u"abajo"_s, QRectF(0, 90, 10, 10)},
                         {u"derecha"_s, QRectF(50, 10, 10, 10)},
                         {u"izquierda"_s, QRectF(0, 5, 10, 20)},
                         {u"arriba"_s, QRectF(0, 0, 10, 10)}}),
            u"arriba\nderecha\nizquierda\nabajo");
  EXPECT_EQ(joinedLines({}), QString());
}

}  // namespace
}  // namespace nimbrel
