#include "storage/HistoryRepair.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <set>

#include "storage/ClipDatabase.h"
#include "storage/ClipRows.h"
#include "storage/SQLiteConnection.h"

namespace nimbrel {
namespace {

constexpr const char* kColumns =
    "id, date, pinned, image_file, image_hash, expires_at, sensitive, payload, rich_file";
/// Without the column that came later.
constexpr const char* kOldColumns =
    "id, date, pinned, image_file, image_hash, expires_at, sensitive, payload, NULL";
constexpr int kColumnCount = 9;
constexpr int kNewestSchema = 2;
/// Of the program's databases, as the library makes them.
constexpr qint64 kPageBytes = 4096;
/// The old log while the new database takes its place.
constexpr const char* kJournalAside = "-wal.aside";
/// Row numbers that are tried one by one where no index tells which there are.
constexpr std::int64_t kMaxProbes = 200'000;

using Row = SQLiteConnection::Bindings;

/// The new database could not be written, which is no matter of the old one.
struct WriteFailure {
  QString description;
};

SQLValue valueAt(sqlite3_stmt* row, int column) {
  switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_column_int64(row, column)};
    case SQLITE_FLOAT:
      return sqlite3_column_double(row, column);
    case SQLITE_TEXT:
      return SQLText{QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(row, column)),
                                sqlite3_column_bytes(row, column))};
    case SQLITE_BLOB:
      return SQLBlob{QByteArray(static_cast<const char*>(sqlite3_column_blob(row, column)),
                                sqlite3_column_bytes(row, column))};
    default:
      return SQLNull{};
  }
}

/// Runs something whose failure means that there is no more of it.
template <typename Attempt>
bool succeeds(const Attempt& attempt) {
  try {
    attempt();
    return true;
  } catch (const SQLError&) {
    return false;
  }
}

/// Reads what can be read of a damaged database.
class Salvage final {
 public:
  Salvage(SQLiteConnection& damaged, SQLiteConnection& repaired) : damaged_(damaged), repaired_(repaired) {
    const bool isNew = succeeds([&] { damaged_.execute("SELECT rich_file FROM clips LIMIT 0"); });
    select_ = QByteArray("SELECT rowid, ") + (isNew ? kColumns : kOldColumns) + " FROM clips NOT INDEXED ";
  }

  /// How many rows it took over.
  [[nodiscard]] qint64 run() {
    // From both ends to where it is broken, and then each that an index knows, or that may be there.
    if (succeeds([&] { read("ORDER BY rowid"); })) return count();
    const std::int64_t before = taken_.empty() ? 0 : *taken_.rbegin();
    static_cast<void>(succeeds([&] { read("ORDER BY rowid DESC"); }));
    const auto after = taken_.upper_bound(before);
    readBetween(before, after == taken_.end() ? before + kMaxProbes : *after);
    return count();
  }

 private:
  void read(const QByteArray& which, const Row& bindings = {}) {
    damaged_.run((select_ + which).constData(), bindings, [&](sqlite3_stmt* row) { take(row); });
  }

  void take(sqlite3_stmt* row) {
    const std::int64_t number = sqlite3_column_int64(row, 0);
    if (taken_.contains(number)) return;
    Row values;
    for (int column = 1; column <= kColumnCount; ++column)
      values.push_back(valueAt(row, column));
    try {
      repaired_.run(
          "INSERT OR ABORT INTO clips(id, date, pinned, image_file, image_hash, expires_at, sensitive, "
          "payload, rich_file) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)",
          values);
      taken_.insert(number);
    } catch (const SQLError& error) {
      // One that breaks the table's rules is no row.
      const int kind = error.code & 0xff;
      if (kind != SQLITE_CONSTRAINT && kind != SQLITE_MISMATCH) throw WriteFailure{error.description()};
    }
  }

  void readBetween(std::int64_t before, std::int64_t after) {
    std::set<std::int64_t> numbers;
    const auto note = [&](sqlite3_stmt* row) { numbers.insert(sqlite3_column_int64(row, 0)); };
    for (const char* const index : {"sqlite_autoindex_clips_1", "clips_date"}) {
      const QByteArray sql = QByteArray("SELECT rowid FROM clips INDEXED BY ") + index;
      static_cast<void>(succeeds([&] { damaged_.run(sql.constData(), {}, note); }));
    }
    for (std::int64_t number = before + 1; number < std::min(after, before + kMaxProbes); ++number)
      numbers.insert(number);
    for (const std::int64_t number : numbers) {
      if (!taken_.contains(number)) static_cast<void>(succeeds([&] { read("WHERE rowid = ?", {number}); }));
    }
  }

  [[nodiscard]] qint64 count() const { return static_cast<qint64>(taken_.size()); }

  SQLiteConnection& damaged_;
  SQLiteConnection& repaired_;
  QByteArray select_;
  std::set<std::int64_t> taken_;
};

const char* const kSuffixes[] = {"", "-wal", "-shm"};

QString withSuffix(const QString& path, const char* suffix) {
  return path + QLatin1String(suffix);
}

bool syncFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) && ::fsync(file.handle()) == 0;
}

/// Copies a database with its log; what went wrong, if anything did.
std::optional<QString> copyDatabase(const QString& from, const QString& to) {
  for (const char* const suffix : kSuffixes) {
    QFile source(withSuffix(from, suffix));
    // An empty log says nothing.
    if (!source.exists() || (*suffix != '\0' && source.size() == 0)) continue;
    const QString copy = withSuffix(to, suffix);
    if (!source.copy(copy)) return source.errorString();
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    if (!syncFile(copy)) return QStringLiteral("fsync: %1").arg(copy);
  }
  return std::nullopt;
}

void removeDatabase(const QString& path) {
  for (const char* const suffix : kSuffixes)
    QFile::remove(withSuffix(path, suffix));
}

/// No key is asked for where rows are copied as they are.
class NoSecrets final : public SecretStore {
 public:
  [[nodiscard]] SecretLookup find(const SecretItem&) override {
    return {SecretLookup::Outcome::unavailable, {}, 0};
  }
  [[nodiscard]] int add(const SecretItem&, const QByteArray&) override { return -1; }
};

/// Makes an empty database with everything that the program's own have.
void createDatabase(const QString& path) {
  NoSecrets secrets;
  SystemRandom random;
  HistoryCipher cipher(secrets, random);
  const ClipDatabase created(path, cipher);
}

/// Has the header count the pages that there are: a file that was cut short is refused otherwise. With the
/// first page of a new database, whose layout is always the same, in place of one that says nothing any more.
void mendHeader(const QString& path, const QByteArray& firstPage = {}) {
  constexpr qint64 kPageCount = 28;
  constexpr qint64 kFreePages = 32;
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite) || file.size() < kPageBytes) return;
  if (!firstPage.isEmpty()) {
    file.write(firstPage);
    file.seek(kFreePages);
    file.write(QByteArray(8, '\0'));
  }
  QByteArray count(4, Qt::Uninitialized);
  qToBigEndian(static_cast<quint32>(file.size() / kPageBytes), count.data());
  file.seek(kPageCount);
  file.write(count);
}

QByteArray firstPageOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.read(kPageBytes) : QByteArray();
}

/// Reads what can be read of a file into a new database; how many rows.
qint64 salvageFrom(const QString& damagedPath, SQLiteConnection& repaired) {
  SQLiteConnection damaged(QFile::encodeName(damagedPath));
  SQLTransaction transaction(repaired);
  const qint64 salvaged = Salvage(damaged, repaired).run();
  transaction.commit();
  return salvaged;
}

/// Works on a copy of its own, which may be mended.
qint64 salvageInto(const QString& fresh, const QString& damagedPath, const QString& workPath) {
  createDatabase(fresh);
  const QByteArray firstPage = firstPageOf(fresh);
  SQLiteConnection repaired(QFile::encodeName(fresh));
  if (repaired.integer("PRAGMA user_version") != kNewestSchema)
    throw WriteFailure{QStringLiteral("no se pudo crear")};
  qint64 salvaged = 0;
  for (const QByteArray& replacement : {QByteArray(), firstPage}) {
    removeDatabase(workPath);
    if (const auto failure = copyDatabase(damagedPath, workPath)) throw WriteFailure{*failure};
    if (!replacement.isEmpty()) QFile::remove(withSuffix(workPath, "-wal"));
    mendHeader(workPath, replacement);
    if (salvaged == 0) salvaged = salvageFrom(workPath, repaired);
  }
  repaired.execute("PRAGMA wal_checkpoint(TRUNCATE)");
  if (repaired.integer("SELECT COUNT(*) FROM clips") != salvaged)
    throw WriteFailure{QStringLiteral("faltan filas")};
  return salvaged;
}

bool syncFolder(const QDir& folder) {
  const int descriptor =
      ::open(QFile::encodeName(folder.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const bool synced = descriptor >= 0 && ::fsync(descriptor) == 0;
  if (descriptor >= 0) ::close(descriptor);
  return synced;
}

/// Puts the new database in the place of the old one. The old log goes first: it must never be taken for the
/// new one's.
std::optional<QString> replaceDatabase(const QString& fresh, const QString& path) {
  const QDir folder = QFileInfo(path).dir();
  const auto problem = [](const char* step) {
    return QStringLiteral("%1: %2").arg(QLatin1String(step), QString::fromLocal8Bit(std::strerror(errno)));
  };
  for (const char* const suffix : {"-wal", "-shm"})
    QFile::remove(withSuffix(fresh, suffix));
  const QString journal = withSuffix(path, "-wal");
  const QString aside = withSuffix(path, kJournalAside);
  if (QFileInfo::exists(journal) && !QFile::rename(journal, aside)) return problem("rename");
  QFile::remove(withSuffix(path, "-shm"));
  if (!syncFile(fresh) || !syncFolder(folder) ||
      std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(path).constData()) != 0) {
    const QString why = problem("rename");
    QFile::rename(aside, journal);
    return why;
  }
  QFile::remove(aside);
  static_cast<void>(syncFolder(folder));
  return std::nullopt;
}

/// Finds out what the library says of a database.
QString problemsOf(SQLiteConnection& database) {
  QStringList problems;
  database.run("PRAGMA integrity_check(3)", {}, [&](sqlite3_stmt* row) {
    problems.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row, 0))));
  });
  return problems == QStringList(QStringLiteral("ok")) ? QString() : problems.join(QStringLiteral("; "));
}

void countRows(SQLiteConnection& database, std::int64_t schema, HistoryCipher* cipher,
               DatabaseHealth& health) {
  health.rows = database.integer("SELECT COUNT(*) FROM clips");
  const QByteArray sql =
      QByteArray("SELECT ") + (schema < kNewestSchema ? kOldColumns : kColumns) + " FROM clips";
  database.run(sql.constData(), {}, [&](sqlite3_stmt* row) {
    constexpr int kPayload = 7;
    const QByteArray payload(static_cast<const char*>(sqlite3_column_blob(row, kPayload)),
                             sqlite3_column_bytes(row, kPayload));
    const bool readable = cipher ? clipOf(row, *cipher).has_value() : !HistoryCipher::isSealed(payload);
    if (!readable) ++health.unreadable;
  });
}

bool isDamage(int code) {
  return (code & 0xff) == SQLITE_CORRUPT || (code & 0xff) == SQLITE_NOTADB || (code & 0xff) == SQLITE_ERROR;
}

}  // namespace

DatabaseHealth examineDatabase(const QString& path, HistoryCipher* cipher) {
  using State = DatabaseHealth::State;
  DatabaseHealth health;
  if (!QFileInfo::exists(path)) return health;
  // Opening it would throw the log away.
  if (QFileInfo(path).size() == 0 && QFileInfo(withSuffix(path, "-wal")).size() > 0)
    return {State::damaged, QStringLiteral("0 bytes"), 0, 0};
  try {
    SQLiteConnection database(QFile::encodeName(path));
    database.keepLogOnClose();
    const std::int64_t schema = database.integer("PRAGMA user_version");
    if (schema > kNewestSchema) return {State::untouchable, QStringLiteral("esquema %1").arg(schema), 0, 0};
    health.state = State::sound;
    // One that has just been made, or by the program before its first start.
    if (schema == 0 && database.integer("SELECT COUNT(*) FROM sqlite_master") == 0) return health;
    health.detail = problemsOf(database);
    if (schema < kNewestSchema && succeeds([&] { database.execute("SELECT rich_file FROM clips LIMIT 0"); }))
      health.detail = QStringLiteral("esquema %1").arg(schema);
    if (!health.detail.isEmpty()) health.state = State::damaged;
    countRows(database, schema, cipher, health);
  } catch (const SQLError& error) {
    health.state = isDamage(error.code) ? State::damaged : State::untouchable;
    health.detail = error.description();
  }
  return health;
}

RepairOutcome repairDatabase(const QString& path, const Clock& clock) {
  const auto now = std::chrono::duration_cast<std::chrono::seconds>(clock.now().time_since_epoch()).count();
  RepairOutcome outcome;
  outcome.setAside = QStringLiteral("brevin.damaged-%1.sqlite").arg(now);
  const QDir folder = QFileInfo(path).dir();
  const QString copy = folder.filePath(outcome.setAside);
  const QString fresh = folder.filePath(QStringLiteral("brevin.repaired.sqlite"));
  // What an interrupted repair has left.
  removeDatabase(fresh);
  // An earlier repair was stopped when it had taken the log away.
  if (!QFileInfo::exists(withSuffix(path, "-wal")))
    QFile::rename(withSuffix(path, kJournalAside), withSuffix(path, "-wal"));
  const QString work = folder.filePath(QStringLiteral("brevin.salvage.sqlite"));
  outcome.failure = copyDatabase(path, copy);
  if (!outcome.failure) {
    try {
      outcome.salvaged = salvageInto(fresh, copy, work);
    } catch (const WriteFailure& failure) {
      outcome.failure = failure.description;
    } catch (const SQLError& error) {
      outcome.failure = error.description();
    }
  }
  removeDatabase(work);
  QFile::remove(withSuffix(copy, "-shm"));
  if (outcome.failure) {
    // The old one is where it was, so that nothing of this is of any use.
    removeDatabase(fresh);
    removeDatabase(copy);
    return outcome;
  }
  outcome.failure = replaceDatabase(fresh, path);
  return outcome;
}

QStringList damagedDatabases(const QString& storageDirectory) {
  return QDir(storageDirectory).entryList({QStringLiteral("brevin.damaged-*.sqlite")}, QDir::Files);
}

}  // namespace nimbrel
