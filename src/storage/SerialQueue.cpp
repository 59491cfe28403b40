#include "storage/SerialQueue.h"

#include <QThread>

namespace nimbrel {

SerialQueue::SerialQueue(const QString& label, Priority priority)
    : thread_([this, label, priority] { run(label, priority); }) {}

SerialQueue::~SerialQueue() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void SerialQueue::post(std::function<void()> task) {
  {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
  }
  wake_.notify_one();
}

bool SerialQueue::isCurrent() const {
  return std::this_thread::get_id() == thread_.get_id();
}

void SerialQueue::run(const QString& label, Priority priority) {
  QThread::currentThread()->setObjectName(label);
  QThread::currentThread()->setPriority(priority == Priority::utility ? QThread::LowPriority
                                                                      : QThread::NormalPriority);
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return stopping_ || !tasks_.empty(); });
    if (tasks_.empty()) return;
    auto task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    task();
    // What the task captured may be large or last of its kind; let it go before waiting for the next one.
    task = nullptr;
    lock.lock();
  }
}

}  // namespace nimbrel
