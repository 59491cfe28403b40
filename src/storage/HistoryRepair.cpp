#include "storage/HistoryRepair.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "storage/ClipDatabase.h"
#include "storage/ClipRows.h"
#include "storage/SQLiteConnection.h"
#include "storage/Salvage.h"

namespace nimbrel {
namespace {

/// Of the program's databases, as the library makes them.
constexpr qint64 kPageBytes = 4096;
/// The old log while the new database takes its place.
constexpr const char* kJournalAside = "-wal.aside";

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
  if (repaired.integer("PRAGMA user_version") != kDatabaseSchema)
    throw WriteFailure{QStringLiteral("no se pudo crear")};
  qint64 salvaged = 0;
  for (const QByteArray& replacement : {QByteArray(), firstPage}) {
    if (salvaged > 0) break;
    removeDatabase(workPath);
    if (const auto failure = copyDatabase(damagedPath, workPath)) throw WriteFailure{*failure};
    if (!replacement.isEmpty()) QFile::remove(withSuffix(workPath, "-wal"));
    mendHeader(workPath, replacement);
    salvaged = salvageFrom(workPath, repaired);
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

/// A name for what is set aside that nothing has yet.
QString freeName(const QDir& folder, std::int64_t moment) {
  QString name;
  do {
    name = QStringLiteral("brevin.damaged-%1.sqlite").arg(moment++);
  } while (folder.exists(name));
  return name;
}

}  // namespace

RepairOutcome repairDatabase(const QString& path, const Clock& clock) {
  const auto now = std::chrono::duration_cast<std::chrono::seconds>(clock.now().time_since_epoch()).count();
  const QDir folder = QFileInfo(path).dir();
  RepairOutcome outcome;
  outcome.setAside = freeName(folder, now);
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
