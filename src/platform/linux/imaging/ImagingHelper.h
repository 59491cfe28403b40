#pragma once

#include <QString>
#include <chrono>
#include <mutex>
#include <optional>
#include <variant>

#include "platform/StopToken.h"
#include "platform/linux/imaging/HelperProcess.h"
#include "platform/linux/imaging/ImagingMessages.h"

namespace nimbrel {

/// What a helper is there for; one that reads text keeps its language models in memory, the other is small.
enum class ImagingSkill { codec, text };

/// The imaging helper as a service: started when something is asked of it, started again when it has ended,
/// killed when it takes too long. A crash costs the request that caused it. Any thread; requests are answered
/// one after the other.
class ImagingHelper final {
 public:
  ImagingHelper(QString program, ImagingSkill skill, std::chrono::milliseconds timeLimit);

  /// The reply, or why there is none. A requested stop kills the helper over its work.
  [[nodiscard]] std::variant<ImagingReply, ImageError> ask(const ImagingRequest& request,
                                                           const StopToken& stop = {});

  /// Ends the helper, if it runs; the next request starts another. For what the helper holds in memory.
  void end();

  /// The helper's process; nothing while none runs.
  [[nodiscard]] std::optional<pid_t> processId();

 private:
  [[nodiscard]] bool ensureStarted();
  [[nodiscard]] std::variant<QByteArray, HelperProcess::Failure> exchange(const QByteArray& frame,
                                                                          const StopToken& stop);

  const QString program_;
  const ImagingSkill skill_;
  const std::chrono::milliseconds timeLimit_;
  std::mutex mutex_;
  std::optional<HelperProcess> process_;
};

/// The helper's program beside ours or in the installation's folder for helpers.
[[nodiscard]] QString imagingHelperProgram();

}  // namespace nimbrel
