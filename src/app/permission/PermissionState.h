#pragma once

#include <QObject>

#include "platform/AccessibilityTrust.h"

namespace nimbrel {

/// What the desktop lets the program do, as last asked. Main thread.
class PermissionState final : public QObject {
  Q_OBJECT

 public:
  /// The port must outlive this.
  explicit PermissionState(AccessibilityTrust& trust);

  /// Whether the program may press keys for the user.
  [[nodiscard]] bool accessibilityGranted() const { return accessibilityGranted_; }

  /// Asks the desktop again.
  void recheck();

  /// Asks the user for the trust, whether or not it has been given already.
  void requestAccessibility();

 Q_SIGNALS:
  void changed();

 private:
  AccessibilityTrust& trust_;
  bool accessibilityGranted_;
};

}  // namespace nimbrel
