#include "platform/linux/X11Pasteboard.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <utility>

#include "platform/linux/X11PasteboardWorker.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

/// How long a write waits for the X server to confirm it. The server answers in well under a millisecond; one
/// that is held up by somebody must not hold up the main thread.
constexpr auto kWriteTimeout = 12ms;

}  // namespace

X11Pasteboard::X11Pasteboard(DesktopEntries& entries, ImageCodec* codec, const QByteArray& display)
    : entries_(entries), codec_(codec), wakeDescriptor_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  worker_ = std::make_unique<Worker>(*this, display);
  shared_.connected = worker_->isConnected();
}

X11Pasteboard::~X11Pasteboard() {
  {
    const std::lock_guard lock(shared_.mutex);
    shared_.stopping = true;
  }
  wakeWorker();
  if (thread_.joinable()) thread_.join();
  // Its last conversion may still want to wake somebody.
  worker_.reset();
  close(wakeDescriptor_);
}

void X11Pasteboard::setReadPolicy(const PasteboardReadPolicy& policy) {
  const std::lock_guard lock(shared_.mutex);
  shared_.policy = policy;
  if (!shared_.connected || thread_.joinable()) return;
  // Nothing can be read before it is known what to read; from here on every change counts.
  worker_->watchSelection();
  thread_ = std::thread([this] { worker_->run(); });
}

qint64 X11Pasteboard::changeCount() const {
  const std::lock_guard lock(shared_.mutex);
  return shared_.changeCount;
}

QList<PasteboardSnapshot> X11Pasteboard::changesAfter(qint64 count) {
  std::deque<PasteboardSnapshot> ready;
  {
    const std::lock_guard lock(shared_.mutex);
    ready = std::exchange(shared_.ready, {});
    shared_.readyBytes = 0;
  }
  QList<PasteboardSnapshot> changes;
  for (PasteboardSnapshot& snapshot : ready) {
    if (snapshot.changeCount > count) changes.append(std::move(snapshot));
  }
  return changes;
}

std::optional<QString> X11Pasteboard::currentText() const {
  const std::lock_guard lock(shared_.mutex);
  return shared_.text;
}

std::optional<qint64> X11Pasteboard::write(const PasteboardContent& content) {
  std::unique_lock lock(shared_.mutex);
  if (!shared_.connected) return std::nullopt;
  const qint64 count = ++shared_.changeCount;
  shared_.text = content.text;
  shared_.pendingWrite = content;
  shared_.pendingClear = false;
  awaitWorker(lock);
  return count;
}

bool X11Pasteboard::awaitWorker(std::unique_lock<std::mutex>& lock) {
  const quint64 ticket = ++shared_.askedTicket;
  wakeWorker();
  return shared_.written.wait_for(lock, kWriteTimeout,
                                  [&] { return shared_.doneTicket >= ticket || !shared_.connected; });
}

std::optional<qint64> X11Pasteboard::clearIfUnchanged(qint64 count) {
  const std::lock_guard lock(shared_.mutex);
  if (!shared_.connected || shared_.changeCount != count) return std::nullopt;
  const qint64 cleared = ++shared_.changeCount;
  shared_.text.reset();
  shared_.pendingWrite.reset();
  shared_.pendingClear = true;
  wakeWorker();
  return cleared;
}

void X11Pasteboard::setChangeHandler(std::function<void()> handler) {
  handler_ = std::move(handler);
}

bool X11Pasteboard::offerAsPrimary() {
  std::unique_lock lock(shared_.mutex);
  if (!shared_.connected) return false;
  shared_.pendingPrimary = true;
  return awaitWorker(lock) && shared_.primaryIsOurs;
}

void X11Pasteboard::wakeWorker() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(wakeDescriptor_, &one, sizeof one);
}

void X11Pasteboard::announce() {
  QMetaObject::invokeMethod(
      &context_,
      [this] {
        if (handler_) handler_();
      },
      Qt::QueuedConnection);
}

}  // namespace nimbrel
