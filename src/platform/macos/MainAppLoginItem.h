#pragma once

#include "platform/LoginItem.h"

namespace nimbrel::macos {

/// The application itself among the user's login items.
class MainAppLoginItem final : public LoginItem {
 public:
  [[nodiscard]] bool isEnabled() const override;
  [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override;
};

}  // namespace nimbrel::macos
