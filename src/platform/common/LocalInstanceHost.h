#pragma once

#include <QCoreApplication>
#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QStringList>
#include <memory>

#include "platform/Clock.h"
#include "platform/InstanceHost.h"
#include "platform/common/CallBudget.h"
#include "platform/common/FileOpenEvents.h"
#include "platform/common/InstanceCall.h"
#include "platform/common/InstanceFolder.h"
#include "platform/common/InstanceInbox.h"
#include "platform/common/IntentBridge.h"
#include "platform/common/LocalInstanceConnection.h"

namespace nimbrel {

/// The instance that holds the lock in a folder of the user's own, and that other processes of the user talk
/// to over a socket beside it. A lock or a socket that a crash has left behind is replaced. Main thread,
/// which waits in `claim` only.
class LocalInstanceHost final : public QObject, public InstanceHost {
  Q_OBJECT

 public:
  /// How many others may be connected at a time. Whoever comes then is told `InstanceClient::kTooManyCalls`.
  static constexpr int kMaxConnections = 16;

  /// The folder is made where there is none; if others may write in it, or its path is too long for a socket,
  /// there is no telling who the instance is.
  explicit LocalInstanceHost(const QString& folder, const InstancePatience& patience = {},
                             std::shared_ptr<const Clock> clock = std::make_shared<SystemClock>());

  /// Takes up also what the system brings into the process itself: the URLs that it opens with the program,
  /// and the intents that it asks for by `nimbrel_perform_intent`. The application outlives this.
  void takeUpSystemRequests(QCoreApplication& application);

  [[nodiscard]] Claim claim(const QStringList& urls) override;
  void setRequests(const InstanceRequests& requests) override;
  /// Tells nobody: no other process listens, and whoever switches the capture gets its state as the answer.
  void announceCapture(bool) override {}

 private:
  enum class Held { byUs, byAnother, byNobody };

  [[nodiscard]] Held takeLock();
  [[nodiscard]] bool takeDamagedLock();
  [[nodiscard]] Claim listen();
  void accept();
  void take(LocalInstanceConnection& connection, const InstanceRequest& request);
  void ask(const InstanceRequest& request);
  void perform(const IntentCall& call, const IntentAnswer& answer);

  const InstanceFolder folder_;
  const InstancePatience patience_;
  const std::shared_ptr<const Clock> clock_;
  /// For what is asked of the history, and for what is asked of the program: whoever floods one of them
  /// leaves the other to the user.
  CallBudget budget_;
  CallBudget controlBudget_;
  InstanceInbox inbox_;
  int connections_ = 0;
  std::unique_ptr<FileOpenEvents> fileOpenEvents_;
  std::unique_ptr<IntentBridge> intentBridge_;
  QLockFile lock_;
  // After the lock, so that the socket goes before it: whoever gets the lock finds no socket in use.
  QLocalServer server_;
};

}  // namespace nimbrel
