#pragma once

#include <QString>

namespace nimbrel::macos {

/// Tells the user something in the notification centre, as far as they let the program. Never waits; any
/// thread.
void notifyUser(const QString& title, const QString& text);

/// The same for a process that is about to end: *waits* until the system has taken it, some seconds at most.
void notifyUserAndWait(const QString& title, const QString& text);

}  // namespace nimbrel::macos
