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
#include <csignal>
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

/// Waits for the end of a process and gives its status.
std::optional<int> waitForEnd(pid_t pid) {
  int status = 0;
  pid_t ended = -1;
  do {
    ended = waitpid(pid, &status, 0);
  } while (ended < 0 && errno == EINTR);
  return ended == pid ? std::optional(status) : std::nullopt;
}

/// The same for one that has closed its channel and therefore should be ending; if it does not, it is killed.
std::optional<int> endSoon(pid_t pid) {
  using namespace std::chrono_literals;
  constexpr int kLooks = 200;
  for (int look = 0; look < kLooks; ++look) {
    int status = 0;
    if (waitpid(pid, &status, WNOHANG) == pid) return status;
    std::this_thread::sleep_for(5ms);
  }
  kill(pid, SIGKILL);
  return waitForEnd(pid);
}

}  // namespace

std::optional<HelperProcess> HelperProcess::start(const QString& program, const QStringList& arguments) {
  std::array<int, 2> ends{-1, -1};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return std::nullopt;
  FileDescriptor ours(ends[0]);
  const FileDescriptor theirs(ends[1]);
  if (fcntl(ours.get(), F_SETFL, O_NONBLOCK) != 0) return std::nullopt;
  const auto pid = spawn(program, arguments, theirs.get());
  if (!pid) return std::nullopt;
  return HelperProcess(*pid, std::move(ours));
}

HelperProcess::HelperProcess(pid_t pid, FileDescriptor channel) : pid_(pid), channel_(std::move(channel)) {}

HelperProcess::HelperProcess(HelperProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)), channel_(std::move(other.channel_)) {}

HelperProcess& HelperProcess::operator=(HelperProcess&& other) noexcept {
  if (this != &other) {
    end();
    pid_ = std::exchange(other.pid_, -1);
    channel_ = std::move(other.channel_);
  }
  return *this;
}

HelperProcess::~HelperProcess() {
  end();
}

void HelperProcess::end() {
  channel_.reset();
  if (pid_ < 0) return;
  kill(pid_, SIGKILL);
  waitForEnd(std::exchange(pid_, -1));
}

bool HelperProcess::endedInPeace() {
  channel_.reset();
  const auto status = endSoon(std::exchange(pid_, -1));
  return status && WIFEXITED(*status) && WEXITSTATUS(*status) == 0;
}

std::variant<QByteArray, HelperProcess::Failure> HelperProcess::exchange(const QByteArray& frame,
                                                                         Deadline deadline,
                                                                         const std::stop_token& stop) {
  const FileDescriptor stopped(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  const std::stop_callback wake(stop, [&stopped] { eventfd_write(stopped.get(), 1); });
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
