#pragma once

namespace nimbrel::macos {

/// Has everything that the program logs go to the system's log, under the program's identifier and the log's
/// category, and to a terminal besides where there is one. Called once, before the application object exists.
void installUnifiedLog();

}  // namespace nimbrel::macos
