#include "capture/MainThreadCalls.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <utility>

namespace nimbrel {

/// Gets an event for each call that is queued.
class MainThreadCalls::Receiver final : public QObject {
 public:
  explicit Receiver(MainThreadCalls& calls) : calls_(calls) {}

 protected:
  void customEvent(QEvent*) override { calls_.deliver(); }

 private:
  MainThreadCalls& calls_;
};

MainThreadCalls::MainThreadCalls() : receiver_(std::make_unique<Receiver>(*this)) {}

MainThreadCalls::~MainThreadCalls() = default;

void MainThreadCalls::post(std::function<void()> call) {
  // The event too is handed over under the lock, so that its memory is seen to change hands.
  const std::lock_guard lock(mutex_);
  queued_.append(std::move(call));
  QCoreApplication::postEvent(receiver_.get(), new QEvent(QEvent::User));
}

void MainThreadCalls::deliver() {
  QList<std::function<void()>> calls;
  {
    const std::lock_guard lock(mutex_);
    calls.swap(queued_);
  }
  for (const auto& call : calls)
    call();
}

}  // namespace nimbrel
