#pragma once

#include <functional>

namespace nimbrel {

/// Tells when the session asks the program to end. Main thread.
class TerminationSignal {
 public:
  virtual ~TerminationSignal() = default;

  /// Called on the main thread, once for each request.
  virtual void setHandler(std::function<void()> handler) = 0;

  /// Called on the main thread when the process is about to end without having been asked, because the
  /// desktop has gone under it.
  virtual void setLastHandler(std::function<void()> handler) = 0;
};

}  // namespace nimbrel
