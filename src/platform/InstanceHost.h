#pragma once

#include <functional>

namespace nimbrel {

/// Keeps the program to one running instance per session. Main thread.
class InstanceHost {
 public:
  enum class Claim {
    /// This process is the instance.
    first,
    /// Another process is; it has been asked to show its panel.
    handedOver,
    /// Another process is, and does not answer; this one must not run beside it.
    unanswered,
    /// The desktop offers no way to tell; the program runs on its own.
    unavailable,
  };

  virtual ~InstanceHost() = default;

  [[nodiscard]] virtual Claim claim() = 0;

  /// Called on the main thread when another start asks this instance to show its panel.
  virtual void setShowHandler(std::function<void()> handler) = 0;
};

}  // namespace nimbrel
