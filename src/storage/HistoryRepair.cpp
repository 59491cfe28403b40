#include "storage/HistoryRepair.h"

#include <sqlite3.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <chrono>
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
/// Row numbers that are tried one by one where no index tells which there are.
constexpr std::int64_t kMaxProbes = 200'000;

using Row = SQLiteConnection::Bindings;

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
    const bool whole = succeeds([&] { read("ORDER BY rowid"); });
    if (!whole) static_cast<void>(succeeds([&] { read("ORDER BY rowid DESC"); }));
    if (!whole) readOneByOne();
    return static_cast<qint64>(taken_.size());
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
    // One that breaks the table's rules is no row.
    const bool stored = succeeds([&] {
      repaired_.run(
          "INSERT OR ABORT INTO clips(id, date, pinned, image_file, image_hash, expires_at, sensitive, "
          "payload, rich_file) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)",
          values);
    });
    if (stored) taken_.insert(number);
  }

  void readOneByOne() {
    std::set<std::int64_t> numbers;
    const auto note = [&](sqlite3_stmt* row) { numbers.insert(sqlite3_column_int64(row, 0)); };
    for (const char* const index : {"sqlite_autoindex_clips_1", "clips_date"}) {
      const QByteArray sql = QByteArray("SELECT rowid FROM clips INDEXED BY ") + index;
      static_cast<void>(succeeds([&] { damaged_.run(sql.constData(), {}, note); }));
    }
    const std::int64_t last = taken_.empty() ? kMaxProbes : *taken_.rbegin();
    for (std::int64_t number = 1; number <= std::min(last, kMaxProbes); ++number)
      numbers.insert(number);
    for (const std::int64_t number : numbers) {
      if (!taken_.contains(number)) static_cast<void>(succeeds([&] { read("WHERE rowid = ?", {number}); }));
    }
  }

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
    if (!source.exists()) continue;
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

qint64 salvageInto(const QString& fresh, const QString& damagedPath) {
  createDatabase(fresh);
  SQLiteConnection repaired(QFile::encodeName(fresh));
  SQLiteConnection damaged(QFile::encodeName(damagedPath));
  damaged.keepLogOnClose();
  SQLTransaction transaction(repaired);
  const qint64 salvaged = Salvage(damaged, repaired).run();
  transaction.commit();
  repaired.execute("PRAGMA wal_checkpoint(TRUNCATE)");
  return salvaged;
}

/// Finds out what the library says of a database.
QString problemsOf(SQLiteConnection& database) {
  QStringList problems;
  database.run("PRAGMA integrity_check(3)", {}, [&](sqlite3_stmt* row) {
    problems.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row, 0))));
  });
  return problems == QStringList(QStringLiteral("ok")) ? QString() : problems.join(QStringLiteral("; "));
}

void countRows(SQLiteConnection& database, HistoryCipher* cipher, DatabaseHealth& health) {
  health.rows = database.integer("SELECT COUNT(*) FROM clips");
  if (!cipher) return;
  const QByteArray sql = QByteArray("SELECT ") + kColumns + " FROM clips";
  database.run(sql.constData(), {}, [&](sqlite3_stmt* row) {
    if (!clipOf(row, *cipher)) ++health.unreadable;
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
  try {
    SQLiteConnection database(QFile::encodeName(path));
    database.keepLogOnClose();
    const std::int64_t schema = database.integer("PRAGMA user_version");
    if (schema > kNewestSchema) return {State::untouchable, QStringLiteral("esquema %1").arg(schema), 0, 0};
    health.state = State::sound;
    // One that has just been made, or by the program before its first start.
    if (schema == 0 && database.integer("SELECT COUNT(*) FROM sqlite_master") == 0) return health;
    health.detail = problemsOf(database);
    if (!health.detail.isEmpty()) health.state = State::damaged;
    countRows(database, cipher, health);
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
  outcome.failure = copyDatabase(path, copy);
  if (outcome.failure) return outcome;
  try {
    outcome.salvaged = salvageInto(fresh, copy);
  } catch (const SQLError& error) {
    // A file that is no database at all has no rows.
    if (!isDamage(error.code)) outcome.failure = error.description();
  }
  if (outcome.failure || !QFileInfo::exists(fresh)) {
    if (!outcome.failure) outcome.failure = QStringLiteral("no se pudo crear %1").arg(fresh);
    removeDatabase(fresh);
    return outcome;
  }
  // Looking into the copy has left an empty log beside it where there was none.
  if (!QFileInfo::exists(withSuffix(path, "-wal"))) QFile::remove(withSuffix(copy, "-wal"));
  QFile::remove(withSuffix(copy, "-shm"));
  syncFile(fresh);
  QFile::remove(withSuffix(fresh, "-wal"));
  QFile::remove(withSuffix(fresh, "-shm"));
  // The old log first: it must never be taken for the new database's.
  QFile::remove(withSuffix(path, "-wal"));
  QFile::remove(withSuffix(path, "-shm"));
  if (std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(path).constData()) != 0)
    outcome.failure = QStringLiteral("rename");
  return outcome;
}

}  // namespace nimbrel
