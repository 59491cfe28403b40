#pragma once

#include <QStringList>

#include "platform/InstanceRequests.h"

namespace nimbrel {

/// Keeps the program to one running instance per session, and lets other processes ask things of it. Main
/// thread.
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

  /// Who answers from now on. What was asked before and has no answer (to be shown, URLs, the end) is asked
  /// at once.
  virtual void setRequests(const InstanceRequests& requests) = 0;

  /// Tells everybody whether capture is paused.
  virtual void announceCapture(bool paused) = 0;
};

}  // namespace nimbrel
