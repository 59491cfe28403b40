#pragma once

#include <QString>
#include <QtGlobal>

namespace nimbrel {

/// An application with a window on the desktop.
struct RunningApplication final {
  /// The desktop's identifier for the application (bundle identifier, desktop-file id); empty when it has
  /// none.
  QString identifier;
  /// The name shown to the user.
  QString name;
  /// Process id, 0 when unknown.
  qint64 processId = 0;

  bool operator==(const RunningApplication&) const = default;
};

}  // namespace nimbrel
