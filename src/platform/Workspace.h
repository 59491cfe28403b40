#pragma once

#include <optional>

#include "platform/RunningApplication.h"

namespace nimbrel {

/// The applications on the desktop. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// The application that the user works in; nothing when there is none or it cannot be told.
  [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;

  /// The application in front of all but this program itself.
  [[nodiscard]] virtual std::optional<RunningApplication> frontmostOtherApplication() const = 0;
};

}  // namespace nimbrel
