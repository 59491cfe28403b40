#pragma once

#include "app/CommandReport.h"
#include "app/HistoryCommand.h"

namespace nimbrel {

/// Writes the history to an archive that is not there yet, once the user has proved who they are where the
/// lock asks for that. A history that cannot be read whole is no success. *Waits* for disk, key store and
/// user.
[[nodiscard]] CommandResult exportTo(const ExportCommand& command, const HistoryCommandParts& parts);

/// Takes the clips of an archive into the history, while the application is not running, and under the same
/// conditions. *Waits* likewise.
[[nodiscard]] CommandResult importFrom(const ImportCommand& command, const HistoryCommandParts& parts);

}  // namespace nimbrel
