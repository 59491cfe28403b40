#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>
#include <optional>
#include <variant>

#include "app/CommandArguments.h"
#include "capture/transforms/TextTransform.h"

namespace nimbrel {

/// "nimbrel classify …": what a text is graded as, or each line of one.
struct ClassifyCommand final {
  std::optional<QString> source;
  bool detectCodes = true;
  /// Whether the lines of a text count too.
  bool multiline = false;
  /// Whether each line of the input is a text of its own, with an answer of its own.
  bool perLine = false;
  /// Empty for the standard input.
  QString file;

  bool operator==(const ClassifyCommand&) const = default;
};

/// "nimbrel transform …": a text transformed.
struct TransformCommand final {
  TextTransform transform = TextTransform::uppercase;
  /// Empty for the standard input.
  QString file;

  bool operator==(const TransformCommand&) const = default;
};

/// What a script asked for; it needs neither a desktop nor a running instance.
using TextCommand = std::variant<ClassifyCommand, TransformCommand>;

/// Reads "classify" or "transform" and what follows; nothing when the first argument is neither.
[[nodiscard]] std::optional<std::variant<TextCommand, UsageError>> parseTextCommand(
    const QStringList& arguments);

/// The most that is read of one text, in bytes: some times the longest that is ever captured.
inline constexpr qint64 kMaxInputBytes = 16 * 1024 * 1024;

/// Reads the command's text from its file, or else from `input`, and writes the answer to `output`; both are
/// open. Gives the exit status: 0, or 1 with a message in `errors` when the text cannot be read, is longer
/// than `kMaxInputBytes` or no UTF-8, when the transform does not apply to it, or the answer cannot be
/// written. Waits for the input; memory is bounded, and with `perLine` the whole may be of any length.
[[nodiscard]] int run(const TextCommand& command, QIODevice& input, QIODevice& output, QIODevice& errors);

}  // namespace nimbrel
