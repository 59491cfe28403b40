#pragma once

#include <QByteArray>
#include <QChar>
#include <QList>
#include <QString>
#include <QStringView>
#include <optional>

/// The rules about text that capture, storage, search and the interface share. "Characters" are what a reader
/// perceives as one: extended grapheme clusters (UAX #29), with CR LF as one.
namespace nimbrel {

/// The text without Unicode white space and line breaks at both ends; a view into the argument.
[[nodiscard]] QStringView trimmedWhitespace(QStringView text);

/// Whether a UTF-16 unit is a line break by itself: U+000A to U+000D, U+0085, U+2028 and U+2029.
[[nodiscard]] constexpr bool isLineBreak(QChar unit) {
  const char16_t c = unit.unicode();
  return (c >= u'\n' && c <= u'\r') || c == u'\x85' || c == u'\x2028' || c == u'\x2029';
}

/// The number of characters.
[[nodiscard]] qsizetype characterCount(QStringView text);

/// Whether the text has at least `count` characters; looks no further than needed.
[[nodiscard]] bool hasCharacters(QStringView text, qsizetype count);

/// The first `count` characters; a view into the argument.
[[nodiscard]] QStringView firstCharacters(QStringView text, qsizetype count);

/// The text folded for search: canonically decomposed, combining marks removed, case folded, as UTF-8.
/// The one function behind index bodies, queries and matching in memory. NUL becomes a space, since neither
/// SQLite nor a search field can hold it.
[[nodiscard]] QByteArray foldedText(QStringView text);

/// The text of strictly valid UTF-8 (RFC 3629), a byte-order mark included; nothing of any other bytes.
[[nodiscard]] std::optional<QString> strictUtf8(const QByteArray& bytes);

/// The text as part of a URL's path: all characters but those that a path may hold as they are (RFC 3986,
/// pchar and "/", without the semicolon, to which older rules give a meaning of its own) escaped as UTF-8.
[[nodiscard]] QString encodedForPath(const QString& text);

/// Splits an already folded query at Unicode white space, dropping empty pieces.
[[nodiscard]] QList<QByteArray> searchTerms(const QByteArray& foldedQuery);

}  // namespace nimbrel
