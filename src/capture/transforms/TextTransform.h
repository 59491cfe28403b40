#pragma once

#include <QLocale>
#include <QString>
#include <array>
#include <optional>

namespace nimbrel {

/// What the user can do to a text before pasting or copying it, in the order in which it is offered.
enum class TextTransform {
  uppercase,
  lowercase,
  titleCase,
  trimWhitespace,
  removeLineBreaks,
  urlEncode,
  urlDecode,
  base64Encode,
  base64Decode,
  formatJSON,
  compactJSON,
};

/// All of them, in their order.
inline constexpr std::array kTextTransforms{
    TextTransform::uppercase,      TextTransform::lowercase,        TextTransform::titleCase,
    TextTransform::trimWhitespace, TextTransform::removeLineBreaks, TextTransform::urlEncode,
    TextTransform::urlDecode,      TextTransform::base64Encode,     TextTransform::base64Decode,
    TextTransform::formatJSON,     TextTransform::compactJSON,
};

/// What the user reads: "Mayúsculas".
[[nodiscard]] QString label(TextTransform transform);

/// What scripts write: "uppercase".
[[nodiscard]] QString name(TextTransform transform);

/// The transform of that name, exactly as `name` gives it.
[[nodiscard]] std::optional<TextTransform> textTransformNamed(QStringView name);

/// The transformed text; nothing when the transform does not apply to it. Pure, any thread.
/// - `locale`: whose rules `titleCase` follows; the others are the same everywhere.
[[nodiscard]] std::optional<QString> apply(TextTransform transform, const QString& text,
                                           const QLocale& locale = QLocale());

}  // namespace nimbrel
