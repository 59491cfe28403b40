#include "storage/DatabaseHealth.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>

#include "storage/ClipRows.h"
#include "storage/SQLiteConnection.h"
#include "storage/Salvage.h"

namespace nimbrel {
namespace {

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
      QByteArray("SELECT ") + (schema < kDatabaseSchema ? kOldClipColumns : kClipColumns) + " FROM clips";
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
  if (QFileInfo(path).size() == 0 && QFileInfo(path + QStringLiteral("-wal")).size() > 0)
    return {State::damaged, QStringLiteral("0 bytes"), 0, 0};
  try {
    SQLiteConnection database(QFile::encodeName(path));
    database.keepLogOnClose();
    const std::int64_t schema = database.integer("PRAGMA user_version");
    if (schema > kDatabaseSchema) return {State::untouchable, QStringLiteral("esquema %1").arg(schema), 0, 0};
    health.state = State::sound;
    // One that has just been made, or by the program before its first start.
    if (schema == 0 && database.integer("SELECT COUNT(*) FROM sqlite_master") == 0) return health;
    health.detail = problemsOf(database);
    if (schema < kDatabaseSchema &&
        succeeds([&] { database.execute("SELECT rich_file FROM clips LIMIT 0"); }))
      health.detail = QStringLiteral("esquema %1").arg(schema);
    if (!health.detail.isEmpty()) health.state = State::damaged;
    countRows(database, schema, cipher, health);
  } catch (const SQLError& error) {
    health.state = isDamage(error.code) ? State::damaged : State::untouchable;
    health.detail = error.description();
  }
  return health;
}

}  // namespace nimbrel
