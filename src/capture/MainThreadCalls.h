#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>
#include <memory>

namespace nimbrel {

/// Brings what other threads have found back to the main thread. Calls that are still on their way when this
/// goes are dropped. Made and destroyed on the main thread.
class MainThreadCalls final {
 public:
  MainThreadCalls() : context_(std::make_unique<QObject>()) {}
  ~MainThreadCalls() = default;
  MainThreadCalls(const MainThreadCalls&) = delete;
  MainThreadCalls& operator=(const MainThreadCalls&) = delete;

  /// Queues a call. Any thread; whoever posts from another one must have ended before this goes.
  template <typename Task>
  void post(Task&& task) {
    QMetaObject::invokeMethod(context_.get(), std::forward<Task>(task), Qt::QueuedConnection);
  }

  /// Makes the calls that have been queued, now. Main thread.
  void deliver() { QCoreApplication::sendPostedEvents(context_.get()); }

 private:
  std::unique_ptr<QObject> context_;
};

}  // namespace nimbrel
