#pragma once

#include <chrono>

#include "platform/common/InstanceFolder.h"
#include "platform/common/InstanceMessages.h"

namespace nimbrel {

/// How long processes wait for each other.
struct InstancePatience final {
  /// For an answer that nobody need be asked for.
  std::chrono::milliseconds answer{5'000};
  /// For one that the user may be asked for; longer than they are given for the password.
  std::chrono::milliseconds asking{150'000};
  /// For an instance that starts, or ends.
  std::chrono::milliseconds starting{15'000};
  /// Between one attempt and the next.
  std::chrono::milliseconds pause{100};
  /// For the rest of what another process has begun to say, or for it to take its answer.
  std::chrono::milliseconds unfinished{5'000};
};

/// What came of asking the instance something.
struct InstanceAnswer final {
  enum class Outcome {
    answered,
    /// Nobody listens.
    nobody,
    /// The connection ended before there was an answer.
    broken,
    /// There was none in time.
    silent,
  };

  Outcome outcome = Outcome::nobody;
  /// What the instance said, if it has answered.
  IntentReply reply;
};

/// Asks the instance and *waits* for its answer; any thread that Qt has started.
[[nodiscard]] InstanceAnswer askInstance(const InstanceFolder& folder, const InstanceRequest& request,
                                         std::chrono::milliseconds patience);

/// Whether anybody listens there, even if they should not answer.
[[nodiscard]] bool isInstanceListening(const InstanceFolder& folder);

}  // namespace nimbrel
