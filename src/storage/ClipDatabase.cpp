#include "storage/ClipDatabase.h"

#include <sqlite3.h>

#include <QFile>
#include <algorithm>
#include <utility>

#include "capture/model/Log.h"
#include "storage/ClipRows.h"

namespace nimbrel {
namespace {

constexpr QFile::Permissions kOwnerOnly = QFile::ReadOwner | QFile::WriteOwner;

constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS clips(\n"
    "    id         TEXT PRIMARY KEY NOT NULL,\n"
    "    date       REAL NOT NULL,\n"
    "    pinned     INTEGER NOT NULL DEFAULT 0,\n"
    "    image_file TEXT,\n"
    "    image_hash TEXT,\n"
    "    expires_at REAL,\n"
    "    sensitive  INTEGER,\n"
    "    payload    BLOB NOT NULL\n"
    ");\n"
    "CREATE INDEX IF NOT EXISTS clips_date ON clips(date DESC);\n"
    "CREATE INDEX IF NOT EXISTS clips_image_hash ON clips(image_hash)\n"
    "    WHERE image_hash IS NOT NULL;";

constexpr const char* kUpsert =
    "INSERT INTO clips(id, date, pinned, image_file, image_hash, expires_at, sensitive, payload, rich_file)\n"
    "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)\n"
    "ON CONFLICT(id) DO UPDATE SET\n"
    "    date = excluded.date, pinned = excluded.pinned,\n"
    "    image_file = excluded.image_file, image_hash = excluded.image_hash,\n"
    "    expires_at = excluded.expires_at, sensitive = excluded.sensitive,\n"
    "    payload = excluded.payload, rich_file = excluded.rich_file";

constexpr const char* kLoad =
    "SELECT id, date, pinned, image_file, image_hash, expires_at, sensitive, payload, rich_file\n"
    "FROM clips ORDER BY date DESC";

constexpr const char* kCannotOpen = "No se pudo abrir la base de datos (el historial no se guardará)";
constexpr const char* kCannotSave = "No se pudo guardar";

void migrate(SQLiteConnection& disk, std::int64_t version) {
  if (version < 1) {
    SQLTransaction transaction(disk);
    disk.execute(kSchema);
    disk.execute("PRAGMA user_version = 1");
    transaction.commit();
  }
  if (version < 2) {
    SQLTransaction transaction(disk);
    disk.execute("ALTER TABLE clips ADD COLUMN rich_file TEXT");
    disk.execute("PRAGMA user_version = 2");
    transaction.commit();
  }
}

/// Makes a missing file before SQLite would, so that it is never readable for others, not even for a moment;
/// the log beside it inherits the mode.
void createPrivately(const QString& path) {
  QFile file(path);
  static_cast<void>(file.open(QIODevice::WriteOnly | QIODevice::NewOnly, kOwnerOnly));
}

std::unique_ptr<SQLiteConnection> openAndMigrate(const QString& path) {
  createPrivately(path);
  // Before the log is made beside it, which takes over its mode.
  QFile::setPermissions(path, kOwnerOnly);
  auto disk = std::make_unique<SQLiteConnection>(QFile::encodeName(path));
  // Asked before anything that writes, so that a file that is not ours to change stays byte for byte as it
  // is.
  const std::int64_t found = disk->integer("PRAGMA user_version");
  if (found > kDatabaseSchema) {
    disk->keepLogOnClose();
    throw SQLError(SQLITE_ERROR,
                   QStringLiteral("la escribió una versión más reciente de Nimbrel (esquema %1)").arg(found));
  }
  if (disk->isReadOnly())
    throw SQLError(SQLITE_READONLY, QStringLiteral("attempt to write a readonly database"));
  disk->execute("PRAGMA auto_vacuum = FULL");
  disk->execute("PRAGMA journal_mode = WAL");
  disk->execute("PRAGMA synchronous = NORMAL");
  disk->execute("PRAGMA secure_delete = ON");
  migrate(*disk, found);
  return disk;
}

}  // namespace

ClipDatabase::ClipDatabase(const QString& path, HistoryCipher& cipher)
    : url_(path),
      cipher_(cipher),
      diskQueue_(QStringLiteral("Nimbrel.db.disk"), SerialQueue::Priority::utility) {
  diskQueue_.runAndWait([this] { openDisk(); });
}

ClipDatabase::~ClipDatabase() {
  retryFailedWrites();
}

void ClipDatabase::openDisk() {
  try {
    disk_ = openAndMigrate(url_);
  } catch (const SQLError& error) {
    logFailure(kCannotOpen, error.description());
  }
}

LoadedHistory ClipDatabase::loadAll() {
  return diskQueue_.runAndWait([this] {
    LoadedHistory loaded;
    loaded.complete = disk_ != nullptr;
    if (!disk_) return loaded;
    try {
      disk_->run(kLoad, {}, [&](sqlite3_stmt* row) {
        if (auto clip = clipOf(row, cipher_))
          loaded.clips.append(std::make_shared<const IndexedClip>(std::move(*clip)));
        else
          ++loaded.unreadableCount;
      });
    } catch (const SQLError& error) {
      logFailure("No se pudo leer el historial", error.description());
      loaded.complete = false;
    }
    return loaded;
  });
}

qint64 ClipDatabase::count() {
  return diskQueue_.runAndWait([this]() -> qint64 {
    if (!disk_) return 0;
    try {
      return disk_->integer("SELECT COUNT(*) FROM clips");
    } catch (const SQLError&) {
      return 0;
    }
  });
}

void ClipDatabase::save(const ClipRef& clip) {
  diskQueue_.post([this, clip] {
    if (!disk_) return;
    // A clip may come back before its row could be deleted.
    for (Removal& removal : undeleted_)
      removal.ids.removeAll(clip->clip.id);
    try {
      write(clip);
    } catch (const SQLError& error) {
      logFailure(kCannotSave, error.description());
      remember(clip);
    }
  });
  index_.put(clip);
}

void ClipDatabase::write(const ClipRef& clip) {
  const auto row = rowOf(clip->clip, cipher_);
  if (!row) throw SQLError(SQLITE_ERROR, QStringLiteral("no se pudo cifrar"));
  disk_->run(kUpsert, *row);
  unwritten_.remove(clip->clip.id);
  noteFailures();
}

void ClipDatabase::remember(const ClipRef& clip) {
  unwritten_.insert(clip->clip.id, clip);
  noteFailures();
}

void ClipDatabase::noteFailures() {
  const bool unfinished = !unwritten_.isEmpty() || !undeleted_.isEmpty();
  hasFailures_ = unfinished || hasTraces_;
  if (unfinished) return;
  for (const auto& task : std::exchange(waitingForWrites_, {}))
    task();
}

void ClipDatabase::retryFailedWrites() {
  if (hasFailures_) diskQueue_.post([this] { writeWhatFailed(); });
}

bool ClipDatabase::succeeds(const std::function<void()>& attempt) {
  try {
    attempt();
    return true;
  } catch (const SQLError&) {
    // Said when it failed first; the next attempt comes.
    return false;
  }
}

void ClipDatabase::writeWhatFailed() {
  // Each by itself: one that cannot succeed, for want of room, say, holds up no other. Deletions make room.
  undeleted_.removeIf([this](const Removal& removal) { return succeeds([&] { erase(removal); }); });
  const auto clips = unwritten_.values();
  for (const ClipRef& clip : clips)
    static_cast<void>(succeeds([&] { write(clip); }));
  if (hasTraces_) static_cast<void>(succeeds([this] { eraseTraces(); }));
  noteFailures();
}

void ClipDatabase::afterWrites(std::function<void()> task) {
  diskQueue_.post([this, task = std::move(task)] {
    if (unwritten_.isEmpty() && undeleted_.isEmpty())
      task();
    else
      waitingForWrites_.append(task);
  });
}

bool ClipDatabase::saveMany(const QList<ClipItem>& clips) {
  return diskQueue_.runAndWait([&] {
    if (!disk_) return false;
    try {
      SQLTransaction transaction(*disk_);
      auto clip = clips.begin();
      disk_->runMany(kUpsert, [&] {
        auto row = clip == clips.end() ? std::nullopt : rowOf(*clip, cipher_);
        if (!row && clip != clips.end()) throw SQLError(SQLITE_ERROR, QStringLiteral("no se pudo cifrar"));
        if (row) ++clip;
        return row;
      });
      transaction.commit();
      return true;
    } catch (const SQLError& error) {
      logFailure("No se pudo migrar el historial", error.description());
      return false;
    }
  });
}

void ClipDatabase::update(const ClipRef& ref) {
  const ClipItem& clip = ref->clip;
  std::vector<SQLValue> values{unixSeconds(clip.date), sqlBool(clip.pinned),
                               clip.expiresAt ? SQLValue{unixSeconds(*clip.expiresAt)} : SQLValue{SQLNull{}},
                               sqlText(clipIdText(clip.id))};
  diskQueue_.post([this, ref, values = std::move(values)] {
    if (!disk_) return;
    // Without a row there is nothing to update.
    if (unwritten_.contains(ref->clip.id)) return remember(ref);
    try {
      disk_->run("UPDATE clips SET date = ?, pinned = ?, expires_at = ? WHERE id = ?", values);
    } catch (const SQLError& error) {
      logFailure("No se pudo actualizar", error.description());
      remember(ref);
    }
  });
}

void ClipDatabase::remove(const QList<QUuid>& ids, Traces traces, std::function<void()> removed) {
  if (ids.isEmpty()) return;
  diskQueue_.post([this, removal = Removal{ids, traces, std::move(removed)}] {
    for (const QUuid& id : removal.ids)
      unwritten_.remove(id);
    try {
      erase(removal);
    } catch (const SQLError& error) {
      logFailure("No se pudo borrar", error.description());
      undeleted_.append(removal);
    }
    noteFailures();
  });
  index_.remove(ids);
}

void ClipDatabase::erase(const Removal& removal) {
  if (disk_) {
    SQLTransaction transaction(*disk_);
    auto id = removal.ids.begin();
    disk_->runMany("DELETE FROM clips WHERE id = ?", [&] {
      return id == removal.ids.end() ? std::nullopt
                                     : std::optional(SQLiteConnection::Bindings{sqlText(clipIdText(*id++))});
    });
    transaction.commit();
    if (removal.traces == Traces::erase) eraseTraces();
  }
  if (removal.removed) removal.removed();
}

void ClipDatabase::eraseTraces() {
  bool busy = false;
  // Waits as long as the busy timeout; what then still reads is waited for by the next attempt.
  disk_->run("PRAGMA wal_checkpoint(TRUNCATE)", {},
             [&](sqlite3_stmt* row) { busy = sqlite3_column_int(row, 0) != 0; });
  hasTraces_ = busy;
}

void ClipDatabase::index(const ClipRef& clip) {
  index_.put(clip);
}

void ClipDatabase::rebuildIndex(const QList<ClipRef>& clips) {
  index_.rebuild(clips);
}

std::optional<QSet<QUuid>> ClipDatabase::search(const QList<QByteArray>& terms) {
  return index_.search(terms);
}

std::optional<QSet<QString>> ClipDatabase::referencedImageFiles() {
  return referencedFiles("SELECT image_file FROM clips WHERE image_file IS NOT NULL",
                         "No se pudieron leer las imágenes referenciadas");
}

std::optional<QSet<QString>> ClipDatabase::referencedRichFiles() {
  return referencedFiles("SELECT rich_file FROM clips WHERE rich_file IS NOT NULL",
                         "No se pudieron leer los archivos de formato referenciados");
}

std::optional<QSet<QString>> ClipDatabase::referencedFiles(const char* sql, const char* message) {
  return diskQueue_.runAndWait([&]() -> std::optional<QSet<QString>> {
    if (!disk_) return std::nullopt;
    try {
      QSet<QString> names;
      disk_->run(sql, {}, [&](sqlite3_stmt* row) {
        names.insert(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row, 0))));
      });
      return names;
    } catch (const SQLError& error) {
      logFailure(message, error.description());
      return std::nullopt;
    }
  });
}

bool ClipDatabase::checkpoint() {
  return diskQueue_.runAndWait([this] {
    // Without a word when it fails: the next start folds the log in.
    return disk_ && succeeds([this] { eraseTraces(); }) && !hasTraces_;
  });
}

void ClipDatabase::flush() {
  diskQueue_.runAndWait([] {});
  index_.flush();
}

}  // namespace nimbrel
