#include "platform/linux/UnixTerminationSignal.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace nimbrel {
namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler has no other way to reach an object than through something with static life.
std::atomic<int> pipeEnd = -1;

/// Neither has what runs when the process ends from within a library.
std::function<void()>& lastHandler() {
  static std::function<void()> handler;
  return handler;
}

void callLastHandler() {
  if (const auto handler = std::exchange(lastHandler(), {})) handler();
}

void writeToPipe(int) {
  const int savedError = errno;
  const char byte = 1;
  [[maybe_unused]] const auto written = write(pipeEnd, &byte, 1);
  errno = savedError;
}

void setSignalAction(void (*action)(int)) {
  struct sigaction change {};
  change.sa_handler = action;
  change.sa_flags = SA_RESTART;
  for (const int number : kSignals)
    sigaction(number, &change, nullptr);
}

}  // namespace

UnixTerminationSignal::UnixTerminationSignal() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) return;
  pipeEnd = ends[1];
  notifier_ = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { readSignals(); });
  setSignalAction(writeToPipe);
}

UnixTerminationSignal::~UnixTerminationSignal() {
  lastHandler() = {};
  if (!notifier_) return;
  setSignalAction(SIG_DFL);
  close(static_cast<int>(notifier_->socket()));
  close(pipeEnd.exchange(-1));
}

void UnixTerminationSignal::setLastHandler(std::function<void()> handler) {
  // The variable comes first, and so outlives what is registered here.
  const bool first = !std::exchange(lastHandlerRegistered_, true);
  lastHandler() = std::move(handler);
  if (first) static_cast<void>(std::atexit(callLastHandler));
}

void UnixTerminationSignal::readSignals() {
  std::array<char, 16> bytes{};
  [[maybe_unused]] const auto count = read(static_cast<int>(notifier_->socket()), bytes.data(), bytes.size());
  if (handler_) handler_();
}

}  // namespace nimbrel
