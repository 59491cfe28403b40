#pragma once

#include <QList>
#include <functional>
#include <memory>
#include <mutex>

class QObject;

namespace nimbrel {

/// Brings what other threads have found back to the main thread. Calls that are still on their way when this
/// goes are dropped. Made and destroyed on the main thread.
class MainThreadCalls final {
 public:
  MainThreadCalls();
  ~MainThreadCalls();
  MainThreadCalls(const MainThreadCalls&) = delete;
  MainThreadCalls& operator=(const MainThreadCalls&) = delete;

  /// Queues a call. Any thread; whoever posts from another one must have ended before this goes.
  void post(std::function<void()> call);

  /// Makes the calls that have been queued, now. Main thread.
  void deliver();

 private:
  class Receiver;

  std::mutex mutex_;
  QList<std::function<void()>> queued_;
  std::unique_ptr<QObject> receiver_;
};

}  // namespace nimbrel
