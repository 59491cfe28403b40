#include "storage/ClipDatabase.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "support/Fakes.h"
#include "support/LogRecorder.h"
#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::indexed;
using testing::textClip;

class ClipDatabaseTest : public ::testing::Test {
 protected:
  ClipDatabaseTest() { open(); }

  void open() { database = std::make_unique<ClipDatabase>(path, cipher); }
  void close() { database.reset(); }
  void reopen() {
    close();
    open();
  }
  /// A second connection, as another program would have it.
  [[nodiscard]] std::int64_t ask(const char* sql) { return SQLiteConnection(path.toUtf8()).integer(sql); }
  [[nodiscard]] QStringList found(const QString& term) {
    QStringList ids;
    const auto answer = database->search({term.toUtf8()});
    if (!answer) return {u"no answer"_s};
    for (const QUuid& id : *answer)
      ids.append(clipIdText(id));
    ids.sort();
    return ids;
  }

  testing::LogRecorder log;
  QTemporaryDir folder;
  QString path = folder.filePath(u"brevin.sqlite"_s);
  testing::FakeSecretStore secrets;
  SystemRandom random;
  HistoryCipher cipher{secrets, random};
  std::unique_ptr<ClipDatabase> database;
};

TEST_F(ClipDatabaseTest, MakesANewFileOfTheCurrentVersion) {
  database->flush();
  EXPECT_EQ(ask("PRAGMA user_version"), 2);
  EXPECT_EQ(
      ask("SELECT COUNT(*) FROM sqlite_master WHERE name IN ('clips', 'clips_date', 'clips_image_hash')"), 3);
  EXPECT_EQ(ask("SELECT COUNT(*) FROM pragma_table_info('clips') WHERE name = 'rich_file'"), 1);
  EXPECT_EQ(ask("PRAGMA auto_vacuum"), 1);
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(ClipDatabaseTest, KeepsItsFilesForTheirOwnerAlone) {
  database->save(indexed(textClip(u"a"_s)));
  database->flush();
  for (const QString& suffix : {u""_s, u"-wal"_s, u"-shm"_s}) {
    const QFileInfo info(path + suffix);
    ASSERT_TRUE(info.exists()) << suffix.toStdString();
    EXPECT_EQ(
        info.permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther),
        QFile::Permissions());
  }
}

TEST_F(ClipDatabaseTest, TightensTheModeOfAnExistingFile) {
  close();
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
  open();
  EXPECT_FALSE(QFileInfo(path).permissions() & QFile::ReadOther);
}

TEST_F(ClipDatabaseTest, BringsAVersionOneFileUpToDate) {
  close();
  QFile::remove(path);
  const ClipItem clip = textClip(u"viejo"_s);
  {
    SQLiteConnection old(path.toUtf8());
    old.execute(
        "CREATE TABLE clips(id TEXT PRIMARY KEY NOT NULL, date REAL NOT NULL, pinned INTEGER NOT NULL "
        "DEFAULT 0,"
        " image_file TEXT, image_hash TEXT, expires_at REAL, sensitive INTEGER, payload BLOB NOT NULL);"
        "PRAGMA user_version = 1");
    old.run("INSERT INTO clips VALUES(?, 5.5, 1, NULL, NULL, NULL, NULL, ?)",
            {sqlText(clipIdText(clip.id)), SQLBlob{"{\"text\":\"viejo\"}"}});
  }
  open();
  const LoadedHistory loaded = database->loadAll();
  ASSERT_EQ(loaded.clips.size(), 1);
  EXPECT_EQ(loaded.clips.at(0)->clip.text, u"viejo"_s);
  EXPECT_TRUE(loaded.clips.at(0)->clip.pinned);
  EXPECT_FALSE(loaded.clips.at(0)->clip.richFile);
  EXPECT_EQ(ask("PRAGMA user_version"), 2);
}

TEST_F(ClipDatabaseTest, GivesBackEveryStoredField) {
  ClipItem clip = textClip(u"canción\nde cuna"_s, 1773500966.125);
  clip.pinned = true;
  clip.imageFile = u"A.png"_s;
  clip.imageHash = u"ab"_s;
  clip.expiresAt = timestampFromUnixSeconds(1773501266.25);
  clip.sensitive = false;
  clip.ocrText = u"visto"_s;
  clip.sourceBundleID = u"org.example"_s;
  clip.sourceName = u"Ejemplo"_s;
  clip.richFile = u"B.rtf"_s;
  clip.richHash = u"ef"_s;
  clip.collection = u"Trabajo"_s;
  clip.fileURLString = u"file:///a"_s;
  database->save(indexed(clip));
  reopen();
  const LoadedHistory loaded = database->loadAll();
  ASSERT_EQ(loaded.clips.size(), 1);
  EXPECT_EQ(loaded.clips.at(0)->clip, clip);
}

TEST_F(ClipDatabaseTest, DoesNotKeepTheRemoteDevice) {
  ClipItem clip = textClip(u"a"_s);
  clip.remoteDevice = RemoteDeviceType::iPad;
  database->save(indexed(clip));
  EXPECT_FALSE(database->loadAll().clips.at(0)->clip.remoteDevice);
}

TEST_F(ClipDatabaseTest, LoadsNewestFirst) {
  for (const double date : {2.0, 3.0, 1.0})
    database->save(indexed(textClip(QString::number(date), date)));
  const auto clips = database->loadAll().clips;
  ASSERT_EQ(clips.size(), 3);
  EXPECT_EQ(clips.at(0)->clip.text + clips.at(1)->clip.text + clips.at(2)->clip.text, u"321"_s);
}

TEST_F(ClipDatabaseTest, NeverWritesTextInClear) {
  database->save(indexed(textClip(u"contenido-inconfundible"_s)));
  database->flush();
  for (const QString& suffix : {u""_s, u"-wal"_s}) {
    QFile file(path + suffix);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("inconfundible"));
  }
}

TEST_F(ClipDatabaseTest, CountsARowOfAnotherKeyAsUnreadableAndKeepsIt) {
  database->save(indexed(textClip(u"legible"_s)));
  database->flush();
  testing::FakeSecretStore elsewhere;
  HistoryCipher other(elsewhere, random);
  {
    ClipDatabase foreign(path, other);
    foreign.save(indexed(textClip(u"ajeno"_s)));
  }
  const LoadedHistory loaded = database->loadAll();
  EXPECT_EQ(loaded.clips.size(), 1);
  EXPECT_EQ(loaded.unreadableCount, 1);
  EXPECT_EQ(database->count(), 2);
}

TEST_F(ClipDatabaseTest, CountsRowsWithBadIdsAndBadPayloadsAsUnreadable) {
  {
    SQLiteConnection other(path.toUtf8());
    other.execute(
        "INSERT INTO clips(id, date, payload) VALUES('nada', 1, '{\"text\":\"a\"}');"
        "INSERT INTO clips(id, date, payload) VALUES('0F8FAD5B-D9CB-469F-A165-70867728950E', 1, 'no es "
        "json');"
        "INSERT INTO clips(id, date, payload) VALUES('1F8FAD5B-D9CB-469F-A165-70867728950E', 1, "
        "'BRVN1corto');"
        "INSERT INTO clips(id, date, payload) VALUES('2F8FAD5B-D9CB-469F-A165-70867728950E', 'mañana', "
        "'{\"text\":\"b\"}')");
  }
  const LoadedHistory loaded = database->loadAll();
  EXPECT_EQ(loaded.unreadableCount, 3);
  ASSERT_EQ(loaded.clips.size(), 1);
  EXPECT_EQ(loaded.clips.at(0)->clip.text, u"b"_s);
}

TEST_F(ClipDatabaseTest, UpdatesARowInPlaceWhenItsIdIsSavedAgain) {
  ClipItem clip = textClip(u"uno"_s);
  database->save(indexed(clip));
  clip.text = u"dos"_s;
  clip.pinned = true;
  database->save(indexed(clip));
  const auto clips = database->loadAll().clips;
  ASSERT_EQ(clips.size(), 1);
  EXPECT_EQ(clips.at(0)->clip, clip);
}

TEST_F(ClipDatabaseTest, UpdatesDatePinAndExpiryWithoutThePayload) {
  ClipItem clip = textClip(u"uno"_s);
  database->save(indexed(clip));
  clip.date = timestampFromUnixSeconds(99.5);
  clip.pinned = true;
  clip.expiresAt = timestampFromUnixSeconds(100.5);
  ClipItem withOtherText = clip;
  withOtherText.text = u"dos"_s;
  database->update(indexed(withOtherText));
  EXPECT_EQ(database->loadAll().clips.at(0)->clip, clip);
}

TEST_F(ClipDatabaseTest, DeletesRowsAndIndexEntries) {
  const ClipItem kept = textClip(u"palabra uno"_s);
  const ClipItem gone = textClip(u"palabra dos"_s);
  database->save(indexed(kept));
  database->save(indexed(gone));
  database->remove({gone.id}, ClipDatabase::Traces::mayLinger);
  EXPECT_EQ(database->count(), 1);
  EXPECT_EQ(found(u"palabra"_s), QStringList{clipIdText(kept.id)});
}

TEST_F(ClipDatabaseTest, DeletesAnEmptyListWithoutAnyWork) {
  database->save(indexed(textClip(u"uno"_s)));
  database->remove({}, ClipDatabase::Traces::erase);
  EXPECT_EQ(database->count(), 1);
}

TEST_F(ClipDatabaseTest, ErasesTheTracesOfADeletionFromTheLog) {
  testing::FakeSecretStore broken;
  broken.findStatus = 1;
  HistoryCipher keyless(broken, random);
  close();
  ClipDatabase plain(path, keyless);
  const ClipItem secret = textClip(u"contenido-inconfundible"_s);
  plain.save(indexed(secret));
  plain.remove({secret.id}, ClipDatabase::Traces::erase);
  plain.flush();
  EXPECT_EQ(QFileInfo(path + u"-wal"_s).size(), 0);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_FALSE(file.readAll().contains("inconfundible"));
}

TEST_F(ClipDatabaseTest, FoldsTheLogIntoTheFileAtACheckpoint) {
  database->save(indexed(textClip(u"uno"_s)));
  database->checkpoint();
  EXPECT_EQ(QFileInfo(path + u"-wal"_s).size(), 0);
}

TEST_F(ClipDatabaseTest, SavesManyRowsOrNone) {
  const QList<ClipItem> clips{textClip(u"uno"_s), textClip(u"dos"_s)};
  EXPECT_TRUE(database->saveMany(clips));
  EXPECT_EQ(database->count(), 2);
}

TEST_F(ClipDatabaseTest, FindsFoldedTermsAllOfWhichOccur) {
  const ClipItem song = textClip(u"Canción de cuna"_s);
  database->save(indexed(song));
  database->save(indexed(textClip(u"canciones"_s)));
  EXPECT_EQ(found(u"cuna"_s), QStringList{clipIdText(song.id)});
  EXPECT_EQ(database->search({"cancion", "cuna"}), QSet<QUuid>{song.id});
  EXPECT_EQ(database->search({"cuna", "guitarra"}), QSet<QUuid>{});
}

TEST_F(ClipDatabaseTest, NeverFindsASensitiveClip) {
  ClipItem secret = textClip(u"palabra secreta"_s);
  secret.sensitive = true;
  database->save(indexed(secret));
  EXPECT_EQ(found(u"palabra"_s), QStringList());
}

TEST_F(ClipDatabaseTest, TakesAClipThatBecameSensitiveOutOfTheIndex) {
  ClipItem clip = textClip(u"palabra"_s);
  database->save(indexed(clip));
  clip.sensitive = true;
  database->index(indexed(clip));
  EXPECT_EQ(found(u"palabra"_s), QStringList());
}

TEST_F(ClipDatabaseTest, TreatsQuotesAndOperatorsInTermsAsText) {
  const ClipItem quoted = textClip(u"dijo \"hola\" AND (x NEAR y)*"_s);
  database->save(indexed(quoted));
  for (const QString& term : {u"\"hola\""_s, u"and"_s, u"(x near"_s, u"y)*"_s})
    EXPECT_EQ(found(term), QStringList{clipIdText(quoted.id)}) << term.toStdString();
  EXPECT_EQ(found(u"\"\"\""_s), QStringList());
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(ClipDatabaseTest, DoesNotIndexAClipWithoutAnyText) {
  ClipItem empty = textClip(QString());
  empty.ocrText = QString();
  database->save(indexed(empty));
  EXPECT_EQ(database->search({"aaa"}), QSet<QUuid>{});
}

TEST_F(ClipDatabaseTest, HasNoAnswerToAnEmptyList) {
  EXPECT_FALSE(database->search({}));
}

TEST_F(ClipDatabaseTest, RebuildsTheIndexFromExactlyTheGivenClips) {
  database->save(indexed(textClip(u"palabra vieja"_s)));
  const ClipItem fresh = textClip(u"palabra nueva"_s);
  database->rebuildIndex({indexed(fresh)});
  database->flush();
  EXPECT_EQ(found(u"palabra"_s), QStringList{clipIdText(fresh.id)});
}

TEST_F(ClipDatabaseTest, NamesTheFilesThatRowsReferTo) {
  ClipItem image = textClip(QString());
  image.imageFile = u"A.png"_s;
  ClipItem rich = textClip(u"b"_s);
  rich.richFile = u"B.rtf"_s;
  database->save(indexed(image));
  database->save(indexed(rich));
  EXPECT_EQ(database->referencedImageFiles(), QSet<QString>{u"A.png"_s});
  EXPECT_EQ(database->referencedRichFiles(), QSet<QString>{u"B.rtf"_s});
}

TEST_F(ClipDatabaseTest, FinishesWhatIsQueuedBeforeItCloses) {
  for (int i = 0; i < 200; ++i)
    database->save(indexed(textClip(QString::number(i))));
  reopen();
  EXPECT_EQ(database->count(), 200);
}

}  // namespace
}  // namespace nimbrel
