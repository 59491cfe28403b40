#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/InstanceRequests.h"
#include "platform/common/AnswerOnce.h"

namespace nimbrel {

/// Answers `nimbrel_perform_intent`, from its construction to its destruction; what has no answer then is
/// answered with `InstanceClient::kUnavailable`. A C function has no object to be called on, therefore there
/// is one bridge in the process, which it finds through the only pointer of its kind. Main thread.
class IntentBridge final {
 public:
  using Perform = std::function<void(const IntentCall&, const IntentAnswer&)>;

  /// An argument that is longer, in bytes, is not even looked at.
  static constexpr std::size_t kMaxArgument = 64'000;

  /// `perform` carries intents out, and answers each now, later or never.
  explicit IntentBridge(Perform perform);
  ~IntentBridge();
  IntentBridge(const IntentBridge&) = delete;
  IntentBridge& operator=(const IntentBridge&) = delete;

  /// Carries out the intent that has a number; `argument` is UTF-8 or null. Answers exactly once, with an
  /// empty message where the bridge itself has refused.
  void perform(int number, const char* argument, IntentAnswer answer);

 private:
  const Perform perform_;
  /// Those that wait, and some that have been answered meanwhile.
  std::vector<std::weak_ptr<AnswerOnce>> waiting_;
};

}  // namespace nimbrel
