#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <optional>
#include <variant>

namespace nimbrel {

/// UTF-8 text to bind; SQLite sees it up to its first NUL.
struct SQLText final {
  QByteArray utf8;
  bool operator==(const SQLText&) const = default;
};

/// Bytes to bind, with their exact count; no bytes at all are a zero-length blob, not NULL.
struct SQLBlob final {
  QByteArray bytes;
  bool operator==(const SQLBlob&) const = default;
};

struct SQLNull final {
  bool operator==(const SQLNull&) const = default;
};

/// A value to bind to a statement's parameter: int, double, text, blob or null.
using SQLValue = std::variant<std::int64_t, double, SQLText, SQLBlob, SQLNull>;

[[nodiscard]] inline SQLValue sqlText(const QString& text) {
  return SQLText{text.toUtf8()};
}

[[nodiscard]] inline SQLValue sqlText(const std::optional<QString>& text) {
  return text ? sqlText(*text) : SQLValue{SQLNull{}};
}

[[nodiscard]] inline SQLValue sqlBool(bool value) {
  return std::int64_t{value ? 1 : 0};
}

}  // namespace nimbrel
