#include "storage/SQLiteConnection.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <QTemporaryDir>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// The error that a piece of work throws.
template <typename Work>
SQLError errorOf(Work&& work) {
  try {
    work();
  } catch (const SQLError& error) {
    return error;
  }
  ADD_FAILURE() << "nothing was thrown";
  return {0, {}};
}

TEST(SQLiteConnection, InAMissingFolderFailsToOpenWithTheLibrarysMessage) {
  const SQLError error = errorOf([] { SQLiteConnection("/nonexistent/folder/file.sqlite"); });
  EXPECT_EQ(error.code, SQLITE_CANTOPEN);
  EXPECT_EQ(error.message, u"unable to open database file"_s);
  EXPECT_EQ(error.description(), u"SQLite 14: unable to open database file"_s);
}

TEST(SQLiteConnection, InMemoryIsEmptyAndPrivate) {
  SQLiteConnection first(":memory:");
  SQLiteConnection second(":memory:");
  first.execute("CREATE TABLE t(x)");
  EXPECT_EQ(first.integer("SELECT COUNT(*) FROM sqlite_master"), 1);
  EXPECT_EQ(second.integer("SELECT COUNT(*) FROM sqlite_master"), 0);
}

TEST(SQLiteConnection, RunsAnUpdateWithoutBindingsOnce) {
  SQLiteConnection connection(":memory:");
  connection.execute("CREATE TABLE t(x); INSERT INTO t VALUES(1)");
  connection.run("UPDATE t SET x = x + 1");
  EXPECT_EQ(connection.integer("SELECT x FROM t"), 2);
}

TEST(SQLiteConnection, BindsEveryKindOfValueInOrder) {
  SQLiteConnection connection(":memory:");
  connection.run(
      "SELECT ?, ?, ?, ?, ?",
      {std::int64_t{-9'000'000'000}, 0.25, sqlText(u"añil"_s), SQLBlob{"a\0b"_ba.left(3)}, SQLNull{}},
      [](sqlite3_stmt* row) {
        EXPECT_EQ(sqlite3_column_int64(row, 0), -9'000'000'000);
        EXPECT_EQ(sqlite3_column_double(row, 1), 0.25);
        EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(row, 2)), "añil");
        EXPECT_EQ(sqlite3_column_type(row, 3), SQLITE_BLOB);
        EXPECT_EQ(sqlite3_column_type(row, 4), SQLITE_NULL);
      });
}

TEST(SQLiteConnection, StoresAnEmptyBlobAsABlob) {
  SQLiteConnection connection(":memory:");
  connection.execute("CREATE TABLE t(x)");
  connection.run("INSERT INTO t VALUES(?)", {SQLBlob{}});
  connection.run("SELECT x FROM t", {}, [](sqlite3_stmt* row) {
    EXPECT_EQ(sqlite3_column_type(row, 0), SQLITE_BLOB);
    EXPECT_EQ(sqlite3_column_bytes(row, 0), 0);
  });
}

TEST(SQLiteConnection, KeepsABlobsExactLength) {
  SQLiteConnection connection(":memory:");
  const QByteArray bytes("a\0b\0", 4);
  connection.run("SELECT ?", {SQLBlob{bytes}},
                 [](sqlite3_stmt* row) { EXPECT_EQ(sqlite3_column_bytes(row, 0), 4); });
}

TEST(SQLiteConnection, CutsTextAtItsFirstNul) {
  SQLiteConnection connection(":memory:");
  connection.run("SELECT ?", {SQLText{QByteArray("ab\0cd", 5)}},
                 [](sqlite3_stmt* row) { EXPECT_EQ(sqlite3_column_bytes(row, 0), 2); });
}

TEST(SQLiteConnection, StaysUsableAfterAConstraintViolation) {
  SQLiteConnection connection(":memory:");
  connection.execute("CREATE TABLE clips(id PRIMARY KEY); INSERT INTO clips VALUES('a')");
  const SQLError error = errorOf([&] { connection.run("INSERT INTO clips VALUES(?)", {sqlText(u"a"_s)}); });
  EXPECT_EQ(error.code, SQLITE_CONSTRAINT);
  EXPECT_EQ(error.description(), u"SQLite 19: UNIQUE constraint failed: clips.id"_s);
  EXPECT_STREQ(error.what(), "SQLite 19: UNIQUE constraint failed: clips.id");
  connection.run("INSERT INTO clips VALUES('b')");
  EXPECT_EQ(connection.integer("SELECT COUNT(*) FROM clips"), 2);
}

TEST(SQLiteConnection, StopsAtTheFirstStatementThatFails) {
  SQLiteConnection connection(":memory:");
  const SQLError error =
      errorOf([&] { connection.execute("CREATE TABLE a(x); NONSENSE; CREATE TABLE b(x)"); });
  EXPECT_EQ(error.code, SQLITE_ERROR);
  EXPECT_TRUE(error.message.contains(u"NONSENSE"));
  EXPECT_EQ(connection.integer("SELECT COUNT(*) FROM sqlite_master"), 1);
}

TEST(SQLiteConnection, FailsToPrepareNonsenseAndNothing) {
  SQLiteConnection connection(":memory:");
  EXPECT_EQ(errorOf([&] { connection.run("SELECT FROM"); }).code, SQLITE_ERROR);
  EXPECT_EQ(errorOf([&] { connection.run(""); }).code, SQLITE_OK);
}

TEST(SQLiteConnection, FailsToBindMoreValuesThanParameters) {
  SQLiteConnection connection(":memory:");
  EXPECT_EQ(errorOf([&] { connection.run("SELECT ?", {SQLNull{}, SQLNull{}}); }).code, SQLITE_RANGE);
}

TEST(SQLiteConnection, KeepsTheRowsDeliveredBeforeAFailure) {
  SQLiteConnection connection(":memory:");
  int rows = 0;
  const SQLError error = errorOf([&] {
    connection.run("SELECT 1 UNION ALL SELECT abs(-9223372036854775807 - 1)", {},
                   [&](sqlite3_stmt*) { ++rows; });
  });
  EXPECT_EQ(error.code, SQLITE_ERROR);
  EXPECT_EQ(rows, 1);
}

TEST(SQLTransaction, RollsBackUnlessCommitted) {
  SQLiteConnection connection(":memory:");
  connection.execute("CREATE TABLE t(x)");
  {
    SQLTransaction transaction(connection);
    connection.execute("INSERT INTO t VALUES(1)");
  }
  EXPECT_EQ(connection.integer("SELECT COUNT(*) FROM t"), 0);
  {
    SQLTransaction transaction(connection);
    connection.execute("INSERT INTO t VALUES(1)");
    transaction.commit();
  }
  EXPECT_EQ(connection.integer("SELECT COUNT(*) FROM t"), 1);
}

}  // namespace
}  // namespace nimbrel
