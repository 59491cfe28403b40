#pragma once

#include <QByteArray>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "storage/SQLError.h"
#include "storage/SQLValue.h"

struct sqlite3;
struct sqlite3_stmt;

namespace nimbrel {

/// One SQLite database handle. Every failure is thrown as `SQLError`. Belongs to one serial queue; the handle
/// is opened fully serialised as a second guard. Closed, with the deferred close, when the object goes.
class SQLiteConnection final {
 public:
  using RowHandler = std::function<void(sqlite3_stmt*)>;

  /// Opens a file, created if missing, or ":memory:". Waits at most 2 s for another process's lock from then
  /// on.
  explicit SQLiteConnection(const QByteArray& path);

  /// Runs one or more statements separated by semicolons; stops at the first that fails.
  void execute(const char* sql);

  /// Prepares one statement, binds the values to its parameters in order, steps it to its end and hands each
  /// row to `onRow`. Rows delivered before a failure stay delivered.
  void run(const char* sql, const std::vector<SQLValue>& bindings = {}, const RowHandler& onRow = {});

  /// Prepares one statement and runs it, for what it changes, once with each set of values that `next` gives,
  /// until it gives none.
  using Bindings = std::vector<SQLValue>;
  void runMany(const char* sql, const std::function<std::optional<Bindings>()>& next);

  /// The first column of the first row as an integer; 0 without a row.
  [[nodiscard]] std::int64_t integer(const char* sql);

  /// Whether the file could be opened for reading only, which the library does without a word.
  [[nodiscard]] bool isReadOnly() const;

  /// Leaves the write-ahead log as it is when the connection closes, instead of folding it into the file.
  void keepLogOnClose();

 private:
  [[nodiscard]] sqlite3_stmt* prepare(const char* sql);
  void bind(sqlite3_stmt* statement, const std::vector<SQLValue>& bindings);
  void step(sqlite3_stmt* statement, const RowHandler& onRow);

  struct Closer {
    void operator()(sqlite3* handle) const;
  };

  [[noreturn]] void fail(int code) const;

  std::unique_ptr<sqlite3, Closer> handle_;
};

/// "BEGIN IMMEDIATE" at construction; "ROLLBACK" at destruction unless committed, its own failure ignored.
class SQLTransaction final {
 public:
  explicit SQLTransaction(SQLiteConnection& connection);
  ~SQLTransaction();
  SQLTransaction(const SQLTransaction&) = delete;
  SQLTransaction& operator=(const SQLTransaction&) = delete;

  void commit();

 private:
  SQLiteConnection& connection_;
  bool open_ = true;
};

}  // namespace nimbrel
