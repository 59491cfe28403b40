#pragma once

namespace nimbrel {

/// Whether the desktop lets this program press keys for the user. Main thread.
class AccessibilityTrust {
 public:
  virtual ~AccessibilityTrust() = default;

  [[nodiscard]] virtual bool isTrusted() const = 0;

  /// Asks the user for trust and opens the place in the system's settings where it is given. False when there
  /// is no such place.
  virtual bool request() = 0;
};

}  // namespace nimbrel
