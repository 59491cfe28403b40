#include "storage/SerialQueue.h"

namespace nimbrel {

SerialQueue::SerialQueue(const QString& label, Priority priority) : thread_(QThread::create([this] { run(); })) {
  thread_->setObjectName(label);
  thread_->start(priority == Priority::utility ? QThread::LowPriority : QThread::NormalPriority);
}

SerialQueue::~SerialQueue() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_one();
  thread_->wait();
}

void SerialQueue::post(std::function<void()> task) {
  {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
  }
  wake_.notify_one();
}

bool SerialQueue::isCurrent() const { return QThread::currentThread() == thread_.get(); }

void SerialQueue::run() {
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
