#pragma once

#include "app/CommandReport.h"
#include "app/HistoryCommand.h"

namespace nimbrel {

/// Says what works and what does not; its exit status is 1 when something does not. *Waits* for the disk and
/// some seconds for key store and lock.
[[nodiscard]] CommandReport examineAll(const HistoryCommandParts& parts);

/// Repairs a damaged database, while the application is not running. *Waits* for the disk.
[[nodiscard]] CommandResult repairHistory(const HistoryCommandParts& parts);

}  // namespace nimbrel
