#pragma once

#include <QStringList>
#include <functional>

namespace nimbrel {

/// What other processes ask of the running instance; every handler is called on the main thread.
struct InstanceRequests final {
  std::function<void()> show;
  /// URLs as they were given, encoded, unchecked and as long as anybody likes.
  std::function<void(const QStringList&)> openUrls;
  std::function<void()> quit;
};

/// Keeps the program to one running instance per session. Main thread.
class InstanceHost {
 public:
  enum class Claim {
    /// This process is the instance.
    first,
    /// Another process is; it has been given the URLs, or without any been asked to show its panel.
    handedOver,
    /// Another process is, and does not answer; this one must not run beside it.
    unanswered,
    /// The desktop offers no way to tell; the program runs on its own.
    unavailable,
  };

  virtual ~InstanceHost() = default;

  [[nodiscard]] virtual Claim claim(const QStringList& urls) = 0;

  /// Who answers from now on; what was asked before that is answered at once.
  virtual void setRequests(const InstanceRequests& requests) = 0;
};

}  // namespace nimbrel
