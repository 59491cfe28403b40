#pragma once

#include "platform/AccessibilityTrust.h"

namespace nimbrel::macos {

/// The permission under "Accessibility" in the System Settings.
class AccessibilityPermission final : public AccessibilityTrust {
 public:
  [[nodiscard]] bool isTrusted() const override;
  bool request() override;
};

}  // namespace nimbrel::macos
