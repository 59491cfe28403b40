#include "storage/Salvage.h"

#include <sqlite3.h>

#include <algorithm>

namespace nimbrel {
namespace {

constexpr int kColumnCount = 9;
/// How far rows are looked for where no index tells which there are.
constexpr std::int64_t kMaxProbes = 1'000'000;
/// How often the damage is run into before that is enough: each row of a damaged page costs some.
constexpr int kMaxFailures = 20'000;

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
  // Without a table that is known there is nothing to ask for.
  if (!succeeds([this] { damaged_.run((select_ + "LIMIT 0").constData()); })) return;
  std::set<std::int64_t> numbers;
  const auto note = [&](sqlite3_stmt* row) { numbers.insert(sqlite3_column_int64(row, 0)); };
  for (const char* const index : {"sqlite_autoindex_clips_1", "clips_date"}) {
    const QByteArray sql = QByteArray("SELECT rowid FROM clips INDEXED BY ") + index;
    static_cast<void>(succeeds([&] { damaged_.run(sql.constData(), {}, note); }));
  }
  for (const std::int64_t number : numbers)
    readRange(number, number);
  readRange(before + 1, std::min(after - 1, before + kMaxProbes));
}

void Salvage::readRange(std::int64_t first, std::int64_t last) {
  if (first > last || failures_ >= kMaxFailures || (first == last && taken_.contains(first))) return;
  if (succeeds([&] { read("WHERE rowid BETWEEN ? AND ?", {first, last}); })) return;
  ++failures_;
  if (first == last) return;
  // The damage is in one half or in both.
  const std::int64_t middle = first + (last - first) / 2;
  readRange(first, middle);
  readRange(middle + 1, last);
}

}  // namespace nimbrel
