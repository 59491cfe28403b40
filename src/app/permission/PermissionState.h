#pragma once

#include <QObject>

#include "platform/AccessibilityTrust.h"
#include "platform/Opener.h"
#include "platform/Pasteboard.h"

namespace nimbrel {

/// What the desktop lets the program do, as last asked. Main thread.
class PermissionState final : public QObject {
  Q_OBJECT

 public:
  /// The ports must outlive this.
  PermissionState(AccessibilityTrust& trust, const Pasteboard& pasteboard, Opener& opener);

  /// Whether the program may press keys for the user.
  [[nodiscard]] bool accessibilityGranted() const { return accessibilityGranted_; }

  /// Whether the user never lets the program read the pasteboard.
  [[nodiscard]] bool pasteboardBlocked() const { return pasteboardBlocked_; }

  /// Asks the desktop again.
  void recheck();

  /// Asks the user for the trust, whether or not it has been given already; false when this desktop has no
  /// place where it is given.
  bool requestAccessibility();

  /// Opens the system's settings about privacy; false when there are none.
  bool openPrivacySettings();

 Q_SIGNALS:
  void changed();

 private:
  AccessibilityTrust& trust_;
  const Pasteboard& pasteboard_;
  Opener& opener_;
  bool accessibilityGranted_ = false;
  bool pasteboardBlocked_ = false;
};

}  // namespace nimbrel
