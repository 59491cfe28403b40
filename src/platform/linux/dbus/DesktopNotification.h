#pragma once

#include <QString>

namespace nimbrel {

/// Has the desktop's notification server show something, if one is running (Desktop Notifications,
/// freedesktop.org); does not wait for it.
void sendNotification(const QString& title, const QString& text);

}  // namespace nimbrel
