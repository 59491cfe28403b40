#pragma once

#include <QString>
#include <optional>

namespace nimbrel {

/// Whether the system starts the program when the user logs in. Any thread, one at a time; both methods
/// *wait* for the disk or the system.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  /// What the system says now.
  [[nodiscard]] virtual bool isEnabled() const = 0;

  /// Nothing when it is done, else what went wrong.
  [[nodiscard]] virtual std::optional<QString> setEnabled(bool enabled) = 0;
};

}  // namespace nimbrel
