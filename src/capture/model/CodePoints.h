#pragma once

#include <QChar>
#include <QStringView>

namespace nimbrel {

/// One Unicode code point of a text; a single surrogate counts as one.
struct CodePoint final {
  char32_t value;
  /// In UTF-16 units.
  qsizetype length;
};

/// The code point that begins at `offset`, which lies inside the text.
[[nodiscard]] inline CodePoint codePointAt(QStringView text, qsizetype offset) {
  const QChar unit = text[offset];
  const bool pair = unit.isHighSurrogate() && offset + 1 < text.size() && text[offset + 1].isLowSurrogate();
  if (pair) return {QChar::surrogateToUcs4(unit, text[offset + 1]), 2};
  return {unit.unicode(), 1};
}

/// The code point that ends before `end`, which lies behind the text's beginning.
[[nodiscard]] inline CodePoint codePointBefore(QStringView text, qsizetype end) {
  const QChar unit = text[end - 1];
  const bool pair = unit.isLowSurrogate() && end > 1 && text[end - 2].isHighSurrogate();
  if (pair) return {QChar::surrogateToUcs4(text[end - 2], unit), 2};
  return {unit.unicode(), 1};
}

[[nodiscard]] constexpr bool isAsciiDigit(char32_t c) {
  return c >= U'0' && c <= U'9';
}
[[nodiscard]] constexpr bool isAsciiUpper(char32_t c) {
  return c >= U'A' && c <= U'Z';
}
[[nodiscard]] constexpr bool isAsciiLower(char32_t c) {
  return c >= U'a' && c <= U'z';
}
[[nodiscard]] constexpr bool isAsciiLetterOrDigit(char32_t c) {
  return isAsciiDigit(c) || isAsciiUpper(c) || isAsciiLower(c);
}

}  // namespace nimbrel
