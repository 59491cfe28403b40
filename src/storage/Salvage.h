#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <set>

#include "storage/SQLiteConnection.h"

namespace nimbrel {

/// The columns of a clip's row in their order, and those of a database that is older than the last of them.
inline constexpr const char* kClipColumns =
    "id, date, pinned, image_file, image_hash, expires_at, sensitive, payload, rich_file";
inline constexpr const char* kOldClipColumns =
    "id, date, pinned, image_file, image_hash, expires_at, sensitive, payload, NULL";

/// The new database could not be written, which is no matter of the old one.
struct WriteFailure final {
  QString description;
};

/// Runs something of a damaged database whose failure means that there is no more of it; whether it
/// succeeded.
template <typename Attempt>
bool succeeds(const Attempt& attempt) {
  try {
    attempt();
    return true;
  } catch (const SQLError&) {
    return false;
  }
}

/// Reads the rows that can be read of a damaged database into a new one, as they are. One thread.
class Salvage final {
 public:
  /// Both outlive this.
  Salvage(SQLiteConnection& damaged, SQLiteConnection& repaired);

  /// How many rows it took over. Throws a `WriteFailure` when the new database cannot be written.
  [[nodiscard]] qint64 run();

 private:
  void read(const QByteArray& which, const SQLiteConnection::Bindings& bindings = {});
  void take(sqlite3_stmt* row);
  void readBetween(std::int64_t before, std::int64_t after);
  void readRange(std::int64_t first, std::int64_t last);
  [[nodiscard]] qint64 count() const { return static_cast<qint64>(taken_.size()); }

  SQLiteConnection& damaged_;
  SQLiteConnection& repaired_;
  QByteArray select_;
  std::set<std::int64_t> taken_;
  int failures_ = 0;
};

}  // namespace nimbrel
