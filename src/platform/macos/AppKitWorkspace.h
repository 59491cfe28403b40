#pragma once

#include <memory>
#include <optional>

#include "platform/Workspace.h"

namespace nimbrel::macos {

class NotificationObserver;

/// `NSWorkspace`: the running applications.
class AppKitWorkspace final : public Workspace {
 public:
  AppKitWorkspace();
  ~AppKitWorkspace() override;

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
  [[nodiscard]] std::optional<RunningApplication> frontmostOtherApplication() const override {
    return other_;
  }

 private:
  std::optional<RunningApplication> other_;
  std::unique_ptr<NotificationObserver> activation_;
};

}  // namespace nimbrel::macos
