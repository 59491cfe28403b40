#include "storage/SQLiteConnection.h"

#include <sqlite3.h>

#include <exception>
#include <limits>

namespace nimbrel {
namespace {

constexpr int kBusyTimeoutMilliseconds = 2000;

struct Finalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

/// Binds one value; SQLite copies text and bytes before the call returns.
class Binder final {
 public:
  Binder(sqlite3_stmt* statement, int parameter) : statement_(statement), parameter_(parameter) {}

  int operator()(std::int64_t value) const { return sqlite3_bind_int64(statement_, parameter_, value); }
  int operator()(double value) const { return sqlite3_bind_double(statement_, parameter_, value); }
  int operator()(const SQLText& text) const {
    return sqlite3_bind_text(statement_, parameter_, text.utf8.constData(), -1, SQLITE_TRANSIENT);
  }
  int operator()(const SQLBlob& blob) const {
    // A null pointer would bind NULL; QByteArray's data pointer never is.
    return sqlite3_bind_blob64(statement_, parameter_, blob.bytes.constData(),
                               static_cast<sqlite3_uint64>(blob.bytes.size()), SQLITE_TRANSIENT);
  }
  int operator()(SQLNull) const { return sqlite3_bind_null(statement_, parameter_); }

 private:
  sqlite3_stmt* statement_;
  int parameter_;
};

}  // namespace

void SQLiteConnection::Closer::operator()(sqlite3* handle) const {
  sqlite3_close_v2(handle);
}

SQLiteConnection::SQLiteConnection(const QByteArray& path) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(
      path.constData(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX, nullptr);
  std::unique_ptr<sqlite3, Closer> handle(opened);
  if (!handle) throw SQLError(code, QStringLiteral("sin memoria"));
  if (code != SQLITE_OK) throw SQLError(code, QString::fromUtf8(sqlite3_errmsg(handle.get())));
  sqlite3_busy_timeout(handle.get(), kBusyTimeoutMilliseconds);
  handle_ = std::move(handle);
}

void SQLiteConnection::execute(const char* sql) {
  char* text = nullptr;
  const int code = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, &text);
  const std::unique_ptr<char, decltype(&sqlite3_free)> message(text, &sqlite3_free);
  if (code != SQLITE_OK) throw SQLError(code, QString::fromUtf8(message.get()));
}

sqlite3_stmt* SQLiteConnection::prepare(const char* sql) {
  sqlite3_stmt* prepared = nullptr;
  const int code = sqlite3_prepare_v2(handle_.get(), sql, -1, &prepared, nullptr);
  if (code != SQLITE_OK || !prepared) fail(code);
  return prepared;
}

void SQLiteConnection::bind(sqlite3_stmt* statement, const std::vector<SQLValue>& bindings) {
  if (bindings.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) std::terminate();
  int parameter = 0;
  for (const auto& value : bindings) {
    const int code = std::visit(Binder(statement, ++parameter), value);
    if (code != SQLITE_OK) fail(code);
  }
}

void SQLiteConnection::step(sqlite3_stmt* statement, const RowHandler& onRow) {
  while (true) {
    const int code = sqlite3_step(statement);
    if (code == SQLITE_DONE) return;
    if (code != SQLITE_ROW) fail(code);
    if (onRow) onRow(statement);
  }
}

void SQLiteConnection::run(const char* sql, const std::vector<SQLValue>& bindings, const RowHandler& onRow) {
  const Statement statement(prepare(sql));
  bind(statement.get(), bindings);
  step(statement.get(), onRow);
}

void SQLiteConnection::runMany(const char* sql, const std::function<std::optional<Bindings>()>& next) {
  const Statement statement(prepare(sql));
  while (const auto bindings = next()) {
    bind(statement.get(), *bindings);
    step(statement.get(), {});
    sqlite3_reset(statement.get());
  }
}

std::int64_t SQLiteConnection::integer(const char* sql) {
  std::int64_t value = 0;
  bool first = true;
  run(sql, {}, [&](sqlite3_stmt* row) {
    if (first) value = sqlite3_column_int64(row, 0);
    first = false;
  });
  return value;
}

bool SQLiteConnection::isReadOnly() const {
  return sqlite3_db_readonly(handle_.get(), "main") == 1;
}

void SQLiteConnection::keepLogOnClose() {
  sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void SQLiteConnection::fail(int code) const {
  throw SQLError(code, QString::fromUtf8(sqlite3_errmsg(handle_.get())));
}

SQLTransaction::SQLTransaction(SQLiteConnection& connection) : connection_(connection) {
  connection_.execute("BEGIN IMMEDIATE");
}

SQLTransaction::~SQLTransaction() {
  if (!open_) return;
  try {
    connection_.execute("ROLLBACK");
  } catch (const SQLError&) {
    // The failure that led here is the one worth reporting.
  }
}

void SQLTransaction::commit() {
  connection_.execute("COMMIT");
  open_ = false;
}

}  // namespace nimbrel
