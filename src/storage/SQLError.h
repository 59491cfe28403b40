#pragma once

#include <QString>
#include <exception>

namespace nimbrel {

/// A failed SQLite call; the one exception type of the storage layer, caught at its boundary.
class SQLError final : public std::exception {
 public:
  SQLError(int resultCode, QString text)
      : code(resultCode), message(std::move(text)), description_(describe().toUtf8()) {}

  /// "SQLite 19: UNIQUE constraint failed: clips.id"
  [[nodiscard]] QString description() const { return describe(); }
  [[nodiscard]] const char* what() const noexcept override { return description_.constData(); }

  /// SQLite's result code.
  int code;
  /// SQLite's message; empty when there is no handle.
  QString message;

 private:
  [[nodiscard]] QString describe() const { return QStringLiteral("SQLite %1: %2").arg(code).arg(message); }

  QByteArray description_;
};

}  // namespace nimbrel
