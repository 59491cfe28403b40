#pragma once

#include <QString>
#include <QStringList>

namespace nimbrel {

/// The arguments after a command's name: its options in front or between, the others in their order.
struct CommandArguments final {
  QStringList options;
  QStringList others;
};

/// "-" is a file's name, and after "--" everything is none of the options.
[[nodiscard]] CommandArguments sortedArguments(const QStringList& arguments);

/// Joins an option with the value that is an argument of its own: "--source ID" becomes "--source=ID".
[[nodiscard]] QStringList withJoinedValue(QStringList arguments, QStringView option);

/// An argument as a message may show it: what it could do to a terminal is left out.
[[nodiscard]] QString printable(const QString& argument);

/// A text of several lines as a terminal may show it.
[[nodiscard]] QString printableLines(const QString& text);

/// JSON, which says the same, without what could do something to a terminal.
[[nodiscard]] QByteArray escapedJson(const QByteArray& json);

/// Why arguments make no command, in one line.
struct UsageError final {
  QString message;

  bool operator==(const UsageError&) const = default;
};

}  // namespace nimbrel
