#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

#include "platform/TerminationSignal.h"

namespace nimbrel {

/// SIGTERM, SIGINT and SIGHUP, which end a session's programs. At most one object may exist.
class UnixTerminationSignal final : public TerminationSignal {
 public:
  UnixTerminationSignal();
  ~UnixTerminationSignal() override;

  void setHandler(std::function<void()> handler) override { handler_ = std::move(handler); }

 private:
  void readSignals();

  std::unique_ptr<QSocketNotifier> notifier_;
  std::function<void()> handler_;
};

}  // namespace nimbrel
