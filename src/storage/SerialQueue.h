#pragma once

#include <QString>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

namespace nimbrel {

/// Runs tasks one after the other, in the order they were posted, on a thread of its own. Destruction runs
/// what is still queued and then ends the thread. All methods may be called from any thread; tasks must not
/// throw.
class SerialQueue final {
 public:
  enum class Priority { utility, userInitiated };

  SerialQueue(const QString& label, Priority priority);
  ~SerialQueue();
  SerialQueue(const SerialQueue&) = delete;
  SerialQueue& operator=(const SerialQueue&) = delete;

  /// Queues a task and returns at once.
  void post(std::function<void()> task);

  /// Queues a task and waits for its result. On the queue's own thread the task runs at once.
  template <typename Task>
  auto runAndWait(Task&& task) -> std::invoke_result_t<Task> {
    if (isCurrent()) return task();
    std::packaged_task<std::invoke_result_t<Task>()> packaged(std::forward<Task>(task));
    auto result = packaged.get_future();
    post([&packaged] { packaged(); });
    return result.get();
  }

 private:
  [[nodiscard]] bool isCurrent() const;
  void run(const QString& label, Priority priority);

  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::function<void()>> tasks_;
  bool stopping_ = false;
  std::thread thread_;
};

}  // namespace nimbrel
