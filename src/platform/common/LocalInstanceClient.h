#pragma once

#include <functional>

#include "platform/InstanceClient.h"
#include "platform/common/InstanceCall.h"
#include "platform/common/InstanceFolder.h"

namespace nimbrel {

/// Talks to the instance that listens in a folder of the user's own. It starts none: where there is none,
/// everything but `quit` fails with `kUnavailable` at once.
class LocalInstanceClient final : public InstanceClient {
 public:
  using Notify = std::function<void(const QString& title, const QString& text)>;

  /// `notify` tells the user something in the desktop's own way.
  LocalInstanceClient(const QString& folder, Notify notify, const InstancePatience& patience = {});

  [[nodiscard]] IntentReply perform(const IntentCall& call) override;
  [[nodiscard]] IntentReply show(bool collections) override;
  [[nodiscard]] IntentReply quit() override;
  [[nodiscard]] bool isRunning() override;
  void notify(const QString& title, const QString& text) override;

 private:
  /// Asks until the instance has started.
  [[nodiscard]] IntentReply ask(const InstanceRequest& request, std::chrono::milliseconds patience) const;
  [[nodiscard]] IntentReply replyOf(const InstanceAnswer& answer) const;

  const InstanceFolder folder_;
  const Notify notify_;
  const InstancePatience patience_;
};

}  // namespace nimbrel
