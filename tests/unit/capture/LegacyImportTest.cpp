#include "capture/LegacyImport.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "storage/RandomSource.h"
#include "storage/StorageDirectory.h"
#include "support/FailingVfs.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"
#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::textClip;

QByteArray jsonOf(const QList<ClipItem>& clips) {
  QJsonArray array;
  for (const ClipItem& clip : clips)
    array.append(clipToJson(clip));
  return QJsonDocument(array).toJson();
}

class LegacyImportTest : public ::testing::Test {
 protected:
  [[nodiscard]] QString file(const QString& name) const { return directory + u'/' + name; }
  void write(const QByteArray& bytes) {
    QFile legacy(file(u"history.json"_s));
    ASSERT_TRUE(legacy.open(QIODevice::WriteOnly));
    legacy.write(bytes);
  }
  void run() { LegacyImport({database, cipher, defaults, clock, settings, files}, directory).run(); }
  [[nodiscard]] QStringList texts() {
    QStringList texts;
    for (const ClipRef& clip : database.loadAll().clips)
      texts.append(clip->clip.text);
    return texts;
  }
  [[nodiscard]] QStringList names() const {
    return QDir(directory).entryList({u"history*"_s}, QDir::Files, QDir::Name);
  }

  testing::LogRecorder log;
  testing::FailingVfs disk;
  QTemporaryDir home;
  QString directory = makeStorageDirectory(home.path());
  testing::ManualClock clock;
  SettingsValues settings;
  testing::FakeSecretStore secrets;
  testing::FakeUserDefaults defaults;
  SystemRandom random;
  HistoryCipher cipher{secrets, random};
  BlobFiles files{directory, cipher, clock};
  ClipDatabase database{databasePath(directory), cipher};
  const QList<ClipItem> clips{textClip(u"nuevo"_s, 2000), textClip(u"viejo"_s, 1000)};
};

TEST_F(LegacyImportTest, WithoutASourceDoesNothing) {
  run();
  EXPECT_TRUE(texts().isEmpty());
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(LegacyImportTest, KeepsEveryFieldThatTheDatabaseHasAPlaceFor) {
  ClipItem clip = textClip(u"todo"_s, 1234.5);
  clip.pinned = true;
  clip.expiresAt = timestampFromUnixSeconds(9999);
  clip.sensitive = false;
  clip.ocrText = u"ocr"_s;
  clip.sourceBundleID = u"com.example"_s;
  clip.sourceName = u"Ejemplo"_s;
  clip.imageFile = u"A.png"_s;
  clip.imageHash = u"abc"_s;
  clip.richFile = u"A.rtf"_s;
  clip.richHash = u"def"_s;
  clip.collection = u"Trabajo"_s;
  write(jsonOf({clip}));
  run();
  const auto loaded = database.loadAll().clips;
  ASSERT_EQ(loaded.size(), 1);
  EXPECT_EQ(loaded.first()->clip, clip);
}

TEST_F(LegacyImportTest, OfAPlainFileLeavesNoPlainCopy) {
  write(jsonOf(clips));
  run();
  EXPECT_EQ(texts(), (QStringList{u"nuevo"_s, u"viejo"_s}));
  EXPECT_TRUE(names().isEmpty());
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(LegacyImportTest, OfASealedFileKeepsACopyAndReplacesAnOlderOne) {
  QFile older(file(u"history.migrated.json"_s));
  ASSERT_TRUE(older.open(QIODevice::WriteOnly));
  older.write("older");
  older.close();
  const QByteArray sealed = *cipher.seal(jsonOf(clips));
  write(sealed);
  run();
  EXPECT_EQ(texts().size(), 2);
  EXPECT_EQ(names(), QStringList{u"history.migrated.json"_s});
  ASSERT_TRUE(older.open(QIODevice::ReadOnly));
  EXPECT_EQ(older.readAll(), sealed);
}

TEST_F(LegacyImportTest, ASecondTimeFindsNothingToDo) {
  write(jsonOf(clips));
  run();
  database.remove({clips.first().id}, ClipDatabase::Traces::mayLinger);
  run();
  EXPECT_EQ(texts(), QStringList{u"viejo"_s});
}

TEST_F(LegacyImportTest, OfAnUnreadableFileSetsItAsideAndThenTriesTheDefaults) {
  defaults.values.insert(u"clipboardItems"_s, jsonOf(clips));
  write("{ esto no es una lista");
  run();
  const QString aside = u"history.corrupt-1773500966.json"_s;
  EXPECT_EQ(names(), QStringList{aside});
  EXPECT_EQ(log.lines(), QStringList{u"Historial ilegible, copia en "_s + aside});
  EXPECT_TRUE(texts().isEmpty());
  run();
  EXPECT_EQ(texts().size(), 2);
  EXPECT_TRUE(defaults.values.isEmpty());
}

TEST_F(LegacyImportTest, OfMalformedJsonImportsNothingAndLosesNothing) {
  const QByteArray good = jsonOf(clips);
  const QList<QByteArray> malformed{
      "",
      "null",
      "{}",
      "[1]",
      "[{}]",
      good.first(good.size() / 2),
      QByteArray(100'000, '['),
      QByteArray(good).replace("\"pinned\": false", "\"pinned\": \"no\""),
      QByteArray(good).replace("\"nuevo\"", "7"),
      QByteArray("BRVN1 no es un sobre"),
      QByteArray("\0\xff\xfe", 3),
  };
  for (const QByteArray& bytes : malformed) {
    write(bytes);
    run();
    ASSERT_EQ(names().size(), 1) << bytes.left(40).toStdString();
    QFile aside(file(names().first()));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), bytes);
    EXPECT_TRUE(aside.remove());
  }
  EXPECT_TRUE(texts().isEmpty());
}

TEST_F(LegacyImportTest, OfAnEmptyListLeavesTheFileInPlace) {
  write("[]");
  run();
  EXPECT_EQ(names(), QStringList{u"history.json"_s});
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(LegacyImportTest, GradesWhatWasNeverGraded) {
  ClipItem key = textClip(u"la clave es\nAKIAIOSFODNN7EXAMPLE"_s, 5000);
  key.richFile = u"A.rtf"_s;
  ClipItem pinned = textClip(u"4111 1111 1111 1111"_s, 4000);
  pinned.pinned = true;
  ClipItem picture = textClip(u""_s, 3000);
  picture.imageFile = u"A.png"_s;
  picture.ocrText = u"IBAN ES9121000418450200051332\nAna"_s;
  ClipItem cleared = textClip(u"5500005555555559"_s, 2000);
  cleared.sensitive = false;
  const ClipItem code = textClip(u"123456"_s, 1000);
  write(jsonOf({key, pinned, picture, cleared, code}));
  ASSERT_TRUE(files.saveRich("{\\rtf1 la clave}", u"A.rtf"_s));
  ASSERT_TRUE(files.saveImage("png", u"A.png"_s));
  run();
  EXPECT_FALSE(files.loadRichData(u"A.rtf"_s));
  EXPECT_TRUE(files.loadImageData(u"A.png"_s));
  const auto imported = database.loadAll().clips;
  ASSERT_EQ(imported.size(), 5);
  EXPECT_TRUE(imported.at(0)->clip.isSensitive());
  EXPECT_EQ(imported.at(0)->clip.expiresAt, clock.now() + std::chrono::seconds(300));
  EXPECT_FALSE(imported.at(0)->clip.richFile);
  EXPECT_TRUE(imported.at(1)->clip.isSensitive());
  EXPECT_FALSE(imported.at(1)->clip.expiresAt);
  EXPECT_TRUE(imported.at(2)->clip.isSensitive());
  EXPECT_FALSE(imported.at(3)->clip.isSensitive());
  EXPECT_FALSE(imported.at(4)->clip.sensitive);
}

TEST_F(LegacyImportTest, LetsACredentialLiveNoLongerThanItWasTo) {
  ClipItem soon = textClip(u"5500005555555559"_s, 5000);
  soon.expiresAt = clock.now() + std::chrono::seconds(10);
  ClipItem late = textClip(u"4111 1111 1111 1111"_s, 4000);
  late.expiresAt = clock.now() + std::chrono::seconds(10'000);
  write(jsonOf({soon, late}));
  run();
  const auto imported = database.loadAll().clips;
  ASSERT_EQ(imported.size(), 2);
  EXPECT_EQ(imported.at(0)->clip.expiresAt, soon.expiresAt);
  EXPECT_EQ(imported.at(1)->clip.expiresAt, clock.now() + std::chrono::seconds(300));
}

TEST_F(LegacyImportTest, KeepsNoCredentialThatTheUserDoesNotWant) {
  settings.sensitiveExpiry = 0;
  ClipItem pinned = textClip(u"4111 1111 1111 1111"_s, 4000);
  pinned.pinned = true;
  ClipItem picture = textClip(u""_s, 3000);
  picture.imageFile = u"A.png"_s;
  picture.ocrText = u"IBAN\nES9121000418450200051332"_s;
  write(jsonOf({textClip(u"5500005555555559"_s, 5000), pinned, picture, textClip(u"texto"_s, 1000)}));
  ASSERT_TRUE(files.saveImage("png", u"A.png"_s));
  run();
  EXPECT_FALSE(files.loadImageData(u"A.png"_s));
  EXPECT_EQ(texts(), (QStringList{u"4111 1111 1111 1111"_s, u"texto"_s}));
  EXPECT_TRUE(names().isEmpty());
}

TEST_F(LegacyImportTest, RemovesNoFileThatAnotherClipHas) {
  settings.sensitiveExpiry = 0;
  ClipItem known = textClip(u"conocido"_s, 9000);
  known.richFile = u"A.rtf"_s;
  ASSERT_TRUE(database.saveMany({known}));
  ASSERT_TRUE(files.saveRich("{\\rtf1 conocido}", u"A.rtf"_s));
  ClipItem card = textClip(u"5500005555555559"_s, 5000);
  card.richFile = u"A.rtf"_s;
  write(jsonOf({card}));
  run();
  EXPECT_EQ(texts(), QStringList{u"conocido"_s});
  EXPECT_TRUE(files.loadRichData(u"A.rtf"_s));
}

TEST_F(LegacyImportTest, OfNothingButUnwantedCredentialsIsDoneToo) {
  settings.sensitiveExpiry = 0;
  write(jsonOf({textClip(u"5500005555555559"_s, 5000)}));
  run();
  EXPECT_TRUE(texts().isEmpty());
  EXPECT_TRUE(names().isEmpty());
}

TEST_F(LegacyImportTest, ThatTheDatabaseRefusesIsTriedAgainAtTheNextLaunch) {
  write(jsonOf(clips));
  disk.failWrites = true;
  run();
  EXPECT_TRUE(log.has(u"No se pudo migrar el historial: "_s));
  EXPECT_EQ(names(), QStringList{u"history.json"_s});
  disk.failWrites = false;
  run();
  EXPECT_EQ(texts().size(), 2);
  EXPECT_TRUE(names().isEmpty());
}

TEST_F(LegacyImportTest, FromTheDefaultsRemovesTheKeyWhenDone) {
  defaults.values.insert(u"clipboardItems"_s, jsonOf(clips));
  disk.failWrites = true;
  run();
  EXPECT_EQ(defaults.values.size(), 1);
  disk.failWrites = false;
  run();
  EXPECT_EQ(texts(), (QStringList{u"nuevo"_s, u"viejo"_s}));
  EXPECT_TRUE(defaults.values.isEmpty());
}

TEST_F(LegacyImportTest, FromDefaultsThatCannotBeWrittenSaysSo) {
  defaults.values.insert(u"clipboardItems"_s, jsonOf(clips));
  defaults.failWrites = true;
  run();
  EXPECT_EQ(texts().size(), 2);
  EXPECT_EQ(log.lines(),
            QStringList{u"No se pudo retirar clipboardItems: las preferencias no se pueden escribir"_s});
}

TEST_F(LegacyImportTest, IsOnTheDiskBeforeItsSourceGoes) {
  write(jsonOf(clips));
  run();
  // Folded into the file itself, which is synced, and not only in the log, which is not.
  EXPECT_EQ(QFileInfo(databasePath(directory) + u"-wal"_s).size(), 0);
}

TEST_F(LegacyImportTest, ThatWaitsOrFailedKeepsItsFilesFromTheSweep) {
  EXPECT_FALSE(holdsUnimportedHistory(directory, defaults));
  write("[]");
  EXPECT_TRUE(holdsUnimportedHistory(directory, defaults));
  write("garbage");
  run();
  EXPECT_TRUE(holdsUnimportedHistory(directory, defaults));
  ASSERT_TRUE(QFile::remove(file(names().first())));
  defaults.values.insert(u"clipboardItems"_s, QByteArray("garbage"));
  EXPECT_TRUE(holdsUnimportedHistory(directory, defaults));
}

TEST_F(LegacyImportTest, TwoUnreadableFilesWithinASecondLoseNothing) {
  write("first");
  run();
  write("second");
  run();
  EXPECT_EQ(names().size(), 2);
  EXPECT_TRUE(log.has(u"No se pudo mover history.json: "_s));
}

TEST_F(LegacyImportTest, FromUnreadableDefaultsRemovesNothing) {
  for (const auto* const bytes : {"", "[]", "[1]", "nada"}) {
    defaults.values.insert(u"clipboardItems"_s, bytes);
    run();
    EXPECT_EQ(defaults.values.size(), 1);
  }
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(LegacyImportTest, OfAFolderInItsPlaceTriesTheDefaults) {
  ASSERT_TRUE(QDir(directory).mkpath(u"history.json"_s));
  defaults.values.insert(u"clipboardItems"_s, jsonOf(clips));
  run();
  EXPECT_EQ(texts().size(), 2);
}

}  // namespace
}  // namespace nimbrel
