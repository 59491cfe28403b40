#pragma once

#include <QString>
#include <QStringList>
#include <variant>

#include "app/HistoryCommand.h"
#include "app/InstanceCommand.h"
#include "app/TextCommand.h"

namespace nimbrel {

/// Run the application.
struct RunCommand final {
  /// What to open, as it was given.
  QStringList urls;
  /// The user has asked for the program just now, and is to see it.
  bool showPanel = false;

  bool operator==(const RunCommand&) const = default;
};

/// Print something and end with a status.
struct PrintCommand final {
  QString output;
  int exitStatus = 0;

  bool operator==(const PrintCommand&) const = default;
};

/// What the program was started for.
using CommandLine = std::variant<RunCommand, PrintCommand, TextCommand, InstanceCommand, HistoryCommand>;

/// Reads the arguments after the program's name: none, URLs of the program's scheme, "--help", "--version",
/// "classify …", "transform …" or what is asked of the running instance or of the history; anything else is
/// answered with a message and status 2.
[[nodiscard]] CommandLine parseCommandLine(const QStringList& arguments, const QString& version);

}  // namespace nimbrel
