#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <chrono>
#include <memory>
#include <optional>
#include <variant>

#include "platform/StopToken.h"
#include "platform/linux/FileDescriptor.h"

namespace nimbrel {

/// One run of the imaging helper, from its start to its end; speaks frames over a socket that is the helper's
/// standard input and output. The helper inherits no other descriptor, and of the environment only a
/// limit to one thread for its recognizer. Ends with this
/// object. One thread at a time.
class HelperProcess final {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  /// Why an exchange gave no reply.
  enum class Failure {
    /// The helper had ended before it saw the request, as it does when idle; another one can be asked.
    gone,
    /// It crashed, was killed, or said something that is no reply.
    broken,
    /// It did not answer in time.
    late,
    /// Nobody wants the answer any more.
    stopped,
  };

  /// Starts a program; nothing when it cannot be started.
  [[nodiscard]] static std::optional<HelperProcess> start(const QString& program,
                                                          const QStringList& arguments);

  HelperProcess(HelperProcess&& other) noexcept;
  HelperProcess& operator=(HelperProcess&& other) noexcept;
  ~HelperProcess();

  /// Sends one frame and waits for the other, until the deadline or a requested stop. After a failure the
  /// process is of no use.
  [[nodiscard]] std::variant<QByteArray, Failure> exchange(const QByteArray& frame, Deadline deadline,
                                                           const StopToken& stop);

  [[nodiscard]] pid_t processId() const;
  /// Whether it has not ended yet, as far as is known.
  [[nodiscard]] bool isAlive() const;

 private:
  class Child;

  HelperProcess(std::unique_ptr<Child> child, FileDescriptor channel);

  /// When waiting ends without an answer.
  struct Patience {
    Deadline deadline;
    /// Readable once a stop has been requested.
    int stopped;
  };

  [[nodiscard]] std::optional<Failure> send(const QByteArray& bytes, const Patience& patience);
  [[nodiscard]] std::variant<QByteArray, Failure> receive(qsizetype length, const Patience& patience);
  [[nodiscard]] std::optional<Failure> waitFor(short events, const Patience& patience) const;
  [[nodiscard]] bool endedInPeace();

  std::unique_ptr<Child> child_;
  FileDescriptor channel_;
};

}  // namespace nimbrel
