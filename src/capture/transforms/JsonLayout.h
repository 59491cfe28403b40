#pragma once

#include <QByteArray>
#include <optional>

namespace nimbrel {

enum class JsonLayout {
  /// A line for each member and element, two spaces for each level; beyond 32 levels, and sooner in a text of
  /// a million values, lines move no further, so that a result is never out of proportion to its text.
  indented,
  /// No white space that means nothing.
  compact,
};

/// A JSON text (RFC 8259, any value at its top) written anew with the members of its objects sorted by the
/// code points of their names; a byte-order mark is left out. Numbers stay as they were written, whatever
/// their size; members with the same name all stay, in their order. Nothing when the text is not valid JSON
/// in UTF-8, or holds half a character in an escape. Nesting of any depth costs no stack. Pure; any thread.
[[nodiscard]] std::optional<QByteArray> laidOutJson(const QByteArray& json, JsonLayout layout);

}  // namespace nimbrel
