#pragma once

#include <QString>
#include <variant>

namespace nimbrel {

/// Why a command failed, as the user reads it, and its exit status.
struct CommandFailure final {
  QString message;
  int status = 1;
};

/// What a command did, as the user reads it, and its exit status.
struct CommandReport final {
  QString text;
  int status = 0;
};

using CommandResult = std::variant<CommandReport, CommandFailure>;

}  // namespace nimbrel
