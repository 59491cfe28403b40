#include <gmock/gmock.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <atomic>

#include "storage/ClipDatabase.h"
#include "support/FailingVfs.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"
#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::indexed;
using testing::textClip;

/// The database over a disk that fails when told to.
class ClipDatabaseFailure : public ::testing::Test {
 protected:
  void open() { database = std::make_unique<ClipDatabase>(path, cipher); }
  void write(const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  [[nodiscard]] QByteArray content() {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  /// The database is gone, and everything goes on with less.
  void expectMemoryOnly() {
    database->save(indexed(textClip(u"palabra"_s)));
    database->update(indexed(textClip(u"x"_s)));
    database->remove({QUuid::createUuid()}, ClipDatabase::Traces::erase);
    EXPECT_FALSE(database->saveMany({textClip(u"y"_s)}));
    EXPECT_EQ(database->count(), 0);
    EXPECT_TRUE(database->loadAll().clips.isEmpty());
    EXPECT_FALSE(database->referencedImageFiles());
    EXPECT_FALSE(database->referencedRichFiles());
    database->checkpoint();
    EXPECT_EQ(database->search({"palabra"})->size(), 1);
    EXPECT_EQ(log.lines().size(), 1) << log.lines().join(u'\n').toStdString();
  }

  static constexpr auto kCannotOpen =
      u"No se pudo abrir la base de datos (el historial no se guardará): SQLite ";

  testing::LogRecorder log;
  testing::FailingVfs disk;
  QTemporaryDir folder;
  QString path = folder.filePath(u"brevin.sqlite"_s);
  testing::FakeSecretStore secrets;
  SystemRandom random;
  HistoryCipher cipher{secrets, random};
  std::unique_ptr<ClipDatabase> database;
};

TEST_F(ClipDatabaseFailure, InAMissingFolderLeavesTheHistoryInMemory) {
  path = folder.filePath(u"ausente/brevin.sqlite"_s);
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen) + u"14: "_s));
  expectMemoryOnly();
}

TEST_F(ClipDatabaseFailure, WhenThePathIsAFolderLeavesTheHistoryInMemory) {
  ASSERT_TRUE(QDir().mkpath(path));
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen)));
  expectMemoryOnly();
}

TEST_F(ClipDatabaseFailure, OfACorruptFileLeavesItByteForByteAsItIs) {
  const QByteArray garbage = QByteArray("esto no es una base de datos\0", 29).repeated(200);
  write(garbage);
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen) + u"26: "_s));
  expectMemoryOnly();
  database.reset();
  EXPECT_EQ(content(), garbage);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"brevin.sqlite"_s});
}

TEST_F(ClipDatabaseFailure, OfATruncatedFileLeavesItByteForByteAsItIs) {
  open();
  for (int i = 0; i < 100; ++i)
    database->save(indexed(textClip(QString(500, u'x'))));
  database->checkpoint();
  database.reset();
  const QByteArray half = content().left(5000);
  write(half);
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen)));
  expectMemoryOnly();
  database.reset();
  EXPECT_EQ(content(), half);
}

TEST_F(ClipDatabaseFailure, OfANewerVersionLeavesTheFileUntouched) {
  {
    SQLiteConnection newer(path.toUtf8());
    newer.execute("CREATE TABLE clips(id, novelty); INSERT INTO clips VALUES(1, 2); PRAGMA user_version = 3");
  }
  const QByteArray before = content();
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen) + u"1: la escribió una versión más reciente"_s));
  expectMemoryOnly();
  database.reset();
  EXPECT_EQ(content(), before);
}

TEST_F(ClipDatabaseFailure, OfAFileThatCannotBeWrittenLeavesTheHistoryInMemory) {
  open();
  database.reset();
  disk.readOnly = true;
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen) + u"8: "_s));
  expectMemoryOnly();
}

TEST_F(ClipDatabaseFailure, OfAMigrationRollsItBack) {
  {
    SQLiteConnection old(path.toUtf8());
    old.execute("CREATE TABLE clips(id TEXT PRIMARY KEY NOT NULL, rich_file TEXT); PRAGMA user_version = 1");
  }
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen) + u"1: duplicate column name: rich_file"_s));
  database.reset();
  EXPECT_EQ(SQLiteConnection(path.toUtf8()).integer("PRAGMA user_version"), 1);
}

TEST_F(ClipDatabaseFailure, OfTheFirstMigrationLeavesNoHalfSchema) {
  disk.failWrites = true;
  open();
  EXPECT_TRUE(log.has(QString::fromUtf16(kCannotOpen)));
  database.reset();
  disk.failWrites = false;
  EXPECT_EQ(SQLiteConnection(path.toUtf8()).integer("SELECT COUNT(*) FROM sqlite_master"), 0);
}

TEST_F(ClipDatabaseFailure, WhenTheDiskIsFullKeepsTheClipInMemoryAndGoesOn) {
  open();
  disk.failWrites = true;
  database->save(indexed(textClip(u"perdido"_s)));
  database->flush();
  EXPECT_TRUE(log.has(u"No se pudo guardar: SQLite 13: "_s));
  disk.failWrites = false;
  database->save(indexed(textClip(u"guardado"_s)));
  EXPECT_EQ(database->count(), 1);
}

TEST_F(ClipDatabaseFailure, IsMadeGoodOnceTheFaultIsGone) {
  open();
  const ClipItem kept = textClip(u"ya estaba"_s, 1);
  const ClipItem removed = textClip(u"borrado"_s, 2);
  database->save(indexed(kept));
  database->save(indexed(removed));
  database->flush();
  disk.failWrites = true;
  ClipItem pinned = kept;
  pinned.pinned = true;
  ClipItem moved = textClip(u"nuevo"_s, 3);
  database->update(indexed(pinned));
  database->save(indexed(moved));
  moved.date = timestampFromUnixSeconds(4);
  database->update(indexed(moved));
  bool gone = false;
  database->remove({removed.id}, ClipDatabase::Traces::erase, [&gone] { gone = true; });
  database->flush();
  const qsizetype said = log.lines().size();
  database->retryFailedWrites();
  database->flush();
  EXPECT_FALSE(gone);
  EXPECT_EQ(log.lines().size(), said);
  disk.failWrites = false;
  database->retryFailedWrites();
  const auto clips = database->loadAll().clips;
  EXPECT_TRUE(gone);
  ASSERT_EQ(clips.size(), 2);
  EXPECT_EQ(clips.at(0)->clip, moved);
  EXPECT_EQ(clips.at(1)->clip, pinned);
}

TEST_F(ClipDatabaseFailure, OfAClipThatWasRemovedMeanwhileIsForgotten) {
  open();
  disk.failWrites = true;
  const ClipItem clip = textClip(u"efímero"_s);
  database->save(indexed(clip));
  database->flush();
  disk.failWrites = false;
  database->remove({clip.id}, ClipDatabase::Traces::mayLinger);
  database->retryFailedWrites();
  EXPECT_EQ(database->count(), 0);
}

TEST_F(ClipDatabaseFailure, ToRemoveAClipIsForgottenWhenItComesBack) {
  open();
  const ClipItem clip = textClip(u"de vuelta"_s);
  const ClipItem other = textClip(u"otro"_s);
  database->save(indexed(clip));
  database->save(indexed(other));
  database->flush();
  disk.failWrites = true;
  bool gone = false;
  database->remove({clip.id, other.id}, ClipDatabase::Traces::mayLinger, [&gone] { gone = true; });
  database->save(indexed(clip));
  database->flush();
  disk.failWrites = false;
  database->retryFailedWrites();
  const auto clips = database->loadAll().clips;
  ASSERT_EQ(clips.size(), 1);
  EXPECT_EQ(clips.first()->clip, clip);
  EXPECT_TRUE(gone);
}

TEST_F(ClipDatabaseFailure, IsMadeGoodAtTheLatestWhenTheProgramEnds) {
  open();
  disk.failWrites = true;
  database->save(indexed(textClip(u"casi perdido"_s)));
  database->flush();
  disk.failWrites = false;
  database.reset();
  open();
  EXPECT_EQ(database->count(), 1);
}

TEST_F(ClipDatabaseFailure, OfOneWriteHoldsUpNoOther) {
  open();
  const ClipItem removed = textClip(u"borrado"_s);
  database->save(indexed(removed));
  database->flush();
  disk.failWrites = true;
  for (int i = 0; i < 5; ++i)
    database->save(indexed(textClip(QString::number(i))));
  database->remove({removed.id}, ClipDatabase::Traces::mayLinger);
  database->flush();
  // Room for some and not for all, whatever the order.
  disk.failWrites = false;
  disk.writesBeforeFailure = 14;
  database->retryFailedWrites();
  database->flush();
  disk.writesBeforeFailure = -1;
  disk.failWrites = false;
  EXPECT_GT(database->count(), 0);
  database->retryFailedWrites();
  EXPECT_EQ(database->count(), 5);
}

TEST_F(ClipDatabaseFailure, ErasesTracesAsSoonAsNobodyReadsAnyMore) {
  open();
  const ClipItem secret = textClip(u"secreto"_s);
  database->save(indexed(secret));
  database->flush();
  SQLiteConnection reader(path.toUtf8());
  reader.execute("BEGIN");
  static_cast<void>(reader.integer("SELECT COUNT(*) FROM clips"));
  database->remove({secret.id}, ClipDatabase::Traces::erase);
  database->flush();
  const QString walPath = path + u"-wal"_s;
  EXPECT_GT(QFileInfo(walPath).size(), 0);
  reader.execute("COMMIT");
  database->retryFailedWrites();
  database->flush();
  EXPECT_EQ(QFileInfo(walPath).size(), 0);
}

TEST_F(ClipDatabaseFailure, HoldsBackWhatWaitsForTheWrites) {
  open();
  bool done = false;
  disk.failWrites = true;
  database->save(indexed(textClip(u"x"_s)));
  database->afterWrites([&done] { done = true; });
  database->flush();
  EXPECT_FALSE(done);
  disk.failWrites = false;
  database->retryFailedWrites();
  database->flush();
  EXPECT_TRUE(done);
}

TEST_F(ClipDatabaseFailure, OfABulkSaveRollsBackWhateverTheRow) {
  open();
  QList<ClipItem> clips;
  for (int i = 0; i < 400; ++i)
    clips.append(textClip(QString(4000, u'x')));
  disk.writesBeforeFailure = 40;
  EXPECT_FALSE(database->saveMany(clips));
  EXPECT_TRUE(log.has(u"No se pudo migrar el historial: SQLite "_s));
  disk.writesBeforeFailure = -1;
  disk.failWrites = false;
  EXPECT_EQ(database->count(), 0);
}

TEST_F(ClipDatabaseFailure, OfAnUpdateIsLogged) {
  open();
  const ClipItem clip = textClip(u"uno"_s);
  database->save(indexed(clip));
  database->flush();
  disk.failWrites = true;
  database->update(indexed(clip));
  database->flush();
  EXPECT_TRUE(log.has(u"No se pudo actualizar: SQLite 13: "_s));
}

TEST_F(ClipDatabaseFailure, OfADeletionRollsItBack) {
  open();
  QList<QUuid> ids;
  for (int i = 0; i < 3; ++i) {
    const ClipItem clip = textClip(QString::number(i));
    ids.append(clip.id);
    database->save(indexed(clip));
  }
  database->flush();
  disk.failWrites = true;
  database->remove(ids, ClipDatabase::Traces::mayLinger);
  database->flush();
  EXPECT_TRUE(log.has(u"No se pudo borrar: SQLite 13: "_s));
  disk.failWrites = false;
  EXPECT_EQ(database->count(), 3);
}

TEST_F(ClipDatabaseFailure, OfReadingGivesWhatWasReadAndSaysSo) {
  open();
  for (int i = 0; i < 300; ++i)
    database->save(indexed(textClip(QString(2000, u'x'))));
  database->checkpoint();
  database.reset();
  open();
  disk.failReads = true;
  EXPECT_LT(database->loadAll().clips.size(), 300);
  EXPECT_TRUE(log.has(u"No se pudo leer el historial: SQLite 10: "_s));
  EXPECT_EQ(database->count(), 0);
  EXPECT_FALSE(database->referencedImageFiles());
  EXPECT_TRUE(log.has(u"No se pudieron leer las imágenes referenciadas: SQLite 10: "_s));
  EXPECT_FALSE(database->referencedRichFiles());
  EXPECT_TRUE(log.has(u"No se pudieron leer los archivos de formato referenciados: SQLite 10: "_s));
}

TEST_F(ClipDatabaseFailure, OfSealingWritesNothing) {
  secrets.secrets.insert(u"Nimbrel.history-key/history"_s, QByteArray(32, 'k'));
  testing::FailingRandom noRandom;
  HistoryCipher starved(secrets, noRandom);
  ClipDatabase unsealed(path, starved);
  unsealed.save(indexed(textClip(u"secreto"_s)));
  EXPECT_EQ(unsealed.count(), 0);
  EXPECT_FALSE(unsealed.saveMany({textClip(u"secreto"_s)}));
  EXPECT_TRUE(log.has(u"No se pudo guardar: "_s));
}

/// Makes the trigram index impossible, or breaks it later, from inside SQLite: an authoriser on every
/// connection.
class IndexFailure : public ClipDatabaseFailure {
 protected:
  IndexFailure() {
    denied = 0;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&IndexFailure::install));
  }
  ~IndexFailure() override {
    database.reset();
    sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&IndexFailure::install));
  }

  static int install(sqlite3* handle, char**, const void*) {
    return sqlite3_set_authorizer(handle, &authorise, nullptr);
  }
  static int authorise(void*, int action, const char* table, const char*, const char*, const char*) {
    const bool isIndex = table && QByteArrayView(table) == QByteArrayView("fts");
    return action == denied && isIndex ? SQLITE_DENY : SQLITE_OK;
  }

  static std::atomic<int> denied;
};

std::atomic<int> IndexFailure::denied = 0;

TEST_F(IndexFailure, AtItsCreationLeavesSearchesWithoutAnswer) {
  denied = SQLITE_CREATE_VTABLE;
  open();
  EXPECT_TRUE(log.has(u"No se pudo crear el índice de búsqueda (se buscará sin índice): SQLite 23: "_s));
  database->save(indexed(textClip(u"palabra"_s)));
  database->rebuildIndex({});
  database->flush();
  EXPECT_FALSE(database->search({"palabra"}));
  EXPECT_EQ(database->count(), 1);
  EXPECT_EQ(log.lines().size(), 1);
}

TEST_F(IndexFailure, AtAnInsertionIsLoggedAndRolledBack) {
  open();
  ClipItem clip = textClip(u"palabra"_s);
  database->save(indexed(clip));
  database->flush();
  denied = SQLITE_INSERT;
  clip.text = u"otra"_s;
  database->index(indexed(clip));
  database->flush();
  EXPECT_TRUE(log.has(u"No se pudo indexar: SQLite 23: "_s));
  EXPECT_EQ(database->search({"palabra"})->size(), 1);
}

TEST_F(IndexFailure, AtARebuildKeepsThePreviousContent) {
  open();
  database->save(indexed(textClip(u"palabra"_s)));
  database->flush();
  denied = SQLITE_INSERT;
  database->rebuildIndex({indexed(textClip(u"otra"_s))});
  database->flush();
  EXPECT_TRUE(log.has(u"No se pudo reconstruir el índice: SQLite 23: "_s));
  EXPECT_EQ(database->search({"palabra"})->size(), 1);
}

TEST_F(IndexFailure, AtADeletionIsLogged) {
  open();
  const ClipItem clip = textClip(u"palabra"_s);
  database->save(indexed(clip));
  database->flush();
  denied = SQLITE_DELETE;
  database->remove({clip.id}, ClipDatabase::Traces::mayLinger);
  database->flush();
  EXPECT_TRUE(log.has(u"No se pudo actualizar el índice: SQLite 23: "_s));
  EXPECT_EQ(database->count(), 0);
}

TEST_F(IndexFailure, AtASearchGivesNoAnswer) {
  open();
  denied = SQLITE_READ;
  EXPECT_FALSE(database->search({"palabra"}));
  EXPECT_TRUE(log.has(u"Búsqueda fallida: SQLite 23: "_s));
}

}  // namespace
}  // namespace nimbrel
