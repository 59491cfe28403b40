#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

#include "platform/TerminationSignal.h"

namespace nimbrel {

/// SIGTERM, SIGINT and SIGHUP, which end a session's programs, and the end of the X server, at which Qt ends
/// the process on the spot. At most one object may exist.
class UnixTerminationSignal final : public TerminationSignal {
 public:
  UnixTerminationSignal();
  ~UnixTerminationSignal() override;

  void setHandler(std::function<void()> handler) override { handler_ = std::move(handler); }
  void setLastHandler(std::function<void()> handler) override;

 private:
  void readSignals();

  std::unique_ptr<QSocketNotifier> notifier_;
  std::function<void()> handler_;
  bool lastHandlerRegistered_ = false;
};

}  // namespace nimbrel
