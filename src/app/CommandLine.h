#pragma once

#include <QString>
#include <QStringList>

namespace nimbrel {

/// What the program was started for.
struct CommandLine final {
  enum class Action {
    run,
    /// Print `output` and end with `exitStatus`.
    print,
  };

  Action action = Action::run;
  QString output;
  int exitStatus = 0;

  bool operator==(const CommandLine&) const = default;
};

/// Reads the arguments after the program's name: none, "--help" or "--version"; anything else is answered
/// with a message and status 2.
[[nodiscard]] CommandLine parseCommandLine(const QStringList& arguments, const QString& version);

}  // namespace nimbrel
