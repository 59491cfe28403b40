#include "storage/Salvage.h"

#include <sqlite3.h>

#include <algorithm>

namespace nimbrel {
namespace {

constexpr int kColumnCount = 9;
/// Row numbers that are tried one by one where no index tells which there are.
constexpr std::int64_t kMaxProbes = 200'000;

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

}  // namespace

Salvage::Salvage(SQLiteConnection& damaged, SQLiteConnection& repaired)
    : damaged_(damaged), repaired_(repaired) {
  const bool isNew = succeeds([&] { damaged_.execute("SELECT rich_file FROM clips LIMIT 0"); });
  select_ =
      QByteArray("SELECT rowid, ") + (isNew ? kClipColumns : kOldClipColumns) + " FROM clips NOT INDEXED ";
}

qint64 Salvage::run() {
  // From both ends to where it is broken, and then each that an index knows, or that may be there.
  if (succeeds([&] { read("ORDER BY rowid"); })) return count();
  const std::int64_t before = taken_.empty() ? 0 : *taken_.rbegin();
  static_cast<void>(succeeds([&] { read("ORDER BY rowid DESC"); }));
  const auto after = taken_.upper_bound(before);
  readBetween(before, after == taken_.end() ? before + kMaxProbes : *after);
  return count();
}

void Salvage::read(const QByteArray& which, const SQLiteConnection::Bindings& bindings) {
  damaged_.run((select_ + which).constData(), bindings, [&](sqlite3_stmt* row) { take(row); });
}

void Salvage::take(sqlite3_stmt* row) {
  const std::int64_t number = sqlite3_column_int64(row, 0);
  if (taken_.contains(number)) return;
  SQLiteConnection::Bindings values;
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

void Salvage::readBetween(std::int64_t before, std::int64_t after) {
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

}  // namespace nimbrel
