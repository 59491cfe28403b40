#include "platform/linux/imaging/HelperProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <QFile>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/imaging/ImagingMessages.h"

namespace nimbrel {
namespace {

/// What is taken from the socket at once; a reply grows as its bytes come, not as its header promises.
constexpr qsizetype kReadBytes = 1 << 20;

class SpawnActions final {
 public:
  SpawnActions() {
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
  }
  ~SpawnActions() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  posix_spawn_file_actions_t actions{};
  posix_spawnattr_t attributes{};
};

/// A program of the user's must not find its signals blocked or ignored because we do so in a thread.
void resetSignals(posix_spawnattr_t& attributes) {
  sigset_t none;
  sigset_t all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

std::optional<pid_t> spawn(const QString& program, const QStringList& arguments, int channel) {
  SpawnActions spawning;
  resetSignals(spawning.attributes);
  posix_spawn_file_actions_adddup2(&spawning.actions, channel, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&spawning.actions, channel, STDOUT_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&spawning.actions, STDERR_FILENO + 1);
  std::vector<QByteArray> words{QFile::encodeName(program)};
  for (const QString& argument : arguments)
    words.push_back(QFile::encodeName(argument));
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (QByteArray& word : words)
    argv.push_back(word.data());
  argv.push_back(nullptr);
  // One thread is all the helper gets.
  QByteArray oneThread = QByteArrayLiteral("OMP_THREAD_LIMIT=1");
  std::array<char*, 2> environment{oneThread.data(), nullptr};
  pid_t pid = -1;
  if (posix_spawn(&pid, words.front().constData(), &spawning.actions, &spawning.attributes, argv.data(),
                  environment.data()) != 0)
    return std::nullopt;
  return pid;
}

}  // namespace

/// A started process. A thread waits for its end, so that no dead one is left lying about however long nobody
/// looks; signals and the end are told apart under a lock, since a process number can be given away again.
class HelperProcess::Child final {
 public:
  explicit Child(pid_t pid) : pid_(pid), waiter_([this] { wait(); }) {}
  ~Child() {
    terminate();
    waiter_.join();
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }

  void terminate() {
    const std::lock_guard lock(mutex_);
    if (!status_) kill(pid_, SIGKILL);
  }

  /// How it ended, if it does within a time.
  [[nodiscard]] std::optional<int> statusWithin(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    ended_.wait_for(lock, time, [this] { return status_.has_value(); });
    return status_;
  }

 private:
  void wait() {
    siginfo_t info{};
    // Without taking it away yet.
    while (waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
    }
    const std::lock_guard lock(mutex_);
    int status = 0;
    waitpid(pid_, &status, 0);
    status_ = status;
    ended_.notify_all();
  }

  const pid_t pid_;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::optional<int> status_;
  // Last member: it uses all of the above.
  std::thread waiter_;
};

std::optional<HelperProcess> HelperProcess::start(const QString& program, const QStringList& arguments) {
  std::array<int, 2> ends{-1, -1};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return std::nullopt;
  FileDescriptor ours(ends[0]);
  const FileDescriptor theirs(ends[1]);
  if (fcntl(ours.get(), F_SETFL, O_NONBLOCK) != 0) return std::nullopt;
  const auto pid = spawn(program, arguments, theirs.get());
  if (!pid) return std::nullopt;
  return HelperProcess(std::make_unique<Child>(*pid), std::move(ours));
}

HelperProcess::HelperProcess(std::unique_ptr<Child> child, FileDescriptor channel)
    : child_(std::move(child)), channel_(std::move(channel)) {}

HelperProcess::HelperProcess(HelperProcess&& other) noexcept = default;

HelperProcess& HelperProcess::operator=(HelperProcess&& other) noexcept = default;

HelperProcess::~HelperProcess() = default;

pid_t HelperProcess::processId() const {
  return child_->pid();
}

bool HelperProcess::isAlive() const {
  return !child_->statusWithin({});
}

bool HelperProcess::endedInPeace() {
  using namespace std::chrono_literals;
  channel_.reset();
  // It has closed its channel and therefore should be ending.
  const auto status = child_->statusWithin(1s);
  return status && WIFEXITED(*status) && WEXITSTATUS(*status) == 0;
}

std::variant<QByteArray, HelperProcess::Failure> HelperProcess::exchange(const QByteArray& frame,
                                                                         Deadline deadline,
                                                                         const StopToken& stop) {
  const FileDescriptor stopped(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  const StopCallback wake(stop, [&stopped] { eventfd_write(stopped.get(), 1); });
  const Patience patience{deadline, stopped.get()};
  for (const QByteArray& part : {frameHeader(frame), frame}) {
    if (const auto failure = send(part, patience)) return *failure;
  }
  auto header = receive(kFrameHeaderBytes, patience);
  if (std::holds_alternative<Failure>(header)) return header;
  const auto length = announcedLength(std::get<QByteArray>(header));
  if (!length) return Failure::broken;
  auto reply = receive(*length, patience);
  // Whatever made it stop in the middle was no peaceful end.
  if (const auto* const failure = std::get_if<Failure>(&reply); failure && *failure == Failure::gone)
    return Failure::broken;
  return reply;
}

std::optional<HelperProcess::Failure> HelperProcess::waitFor(short events, const Patience& patience) const {
  using namespace std::chrono;
  for (;;) {
    const auto left = ceil<milliseconds>(patience.deadline - steady_clock::now()).count();
    if (left <= 0) return Failure::late;
    std::array<pollfd, 2> watched{pollfd{channel_.get(), events, 0}, pollfd{patience.stopped, POLLIN, 0}};
    const int ready = poll(watched.data(), watched.size(), static_cast<int>(left));
    if (ready > 0) return watched[1].revents != 0 ? std::optional(Failure::stopped) : std::nullopt;
    if (ready < 0 && errno != EINTR) return Failure::broken;
  }
}

std::optional<HelperProcess::Failure> HelperProcess::send(const QByteArray& bytes, const Patience& patience) {
  qsizetype sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = ::send(channel_.get(), bytes.constData() + sent,
                                 static_cast<size_t>(bytes.size() - sent), MSG_NOSIGNAL);
    if (count > 0) {
      sent += count;
    } else if (count < 0 && (errno == EPIPE || errno == ECONNRESET)) {
      return endedInPeace() ? Failure::gone : Failure::broken;
    } else if (count < 0 && errno != EAGAIN && errno != EINTR) {
      return Failure::broken;
    } else if (const auto failure = waitFor(POLLOUT, patience)) {
      return failure;
    }
  }
  return std::nullopt;
}

std::variant<QByteArray, HelperProcess::Failure> HelperProcess::receive(qsizetype length,
                                                                        const Patience& patience) {
  QByteArray bytes;
  while (bytes.size() < length) {
    const qsizetype have = bytes.size();
    const qsizetype want = std::min(length - have, kReadBytes);
    bytes.resize(have + want);
    const ssize_t count = recv(channel_.get(), bytes.data() + have, static_cast<size_t>(want), 0);
    bytes.resize(have + std::max<ssize_t>(count, 0));
    if (count == 0 || (count < 0 && errno == ECONNRESET)) {
      const bool unanswered = endedInPeace() && bytes.isEmpty();
      return unanswered ? Failure::gone : Failure::broken;
    }
    if (count < 0 && errno != EAGAIN && errno != EINTR) return Failure::broken;
    if (count > 0) continue;
    if (const auto failure = waitFor(POLLIN, patience)) return *failure;
  }
  return bytes;
}

}  // namespace nimbrel
