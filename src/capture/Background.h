#pragma once

#include <functional>
#include <utility>

#include "capture/MainThreadCalls.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// Asks the system what takes time without making the user wait for the answer. Main thread.
class Background final {
 public:
  /// The name is that of its queue.
  explicit Background(const QString& name) : queue_(name, SerialQueue::Priority::userInitiated) {}

  /// Runs a task elsewhere, after those that were given before, and hands its result over on the main thread;
  /// not any more once this is gone.
  template <typename Task, typename Done>
  void run(Task task, Done done) {
    queue_.post([this, task = std::move(task), done = std::move(done)] {
      calls_.post([done, result = task()] { done(result); });
    });
  }

  /// *Waits* until all that was given has run; what came of it is handed over later.
  void wait() {
    queue_.runAndWait([] {});
  }

 private:
  MainThreadCalls calls_;
  // Last member, first to go: what it still runs posts to the calls.
  SerialQueue queue_;
};

}  // namespace nimbrel
