#pragma once

#include <QLocalSocket>
#include <QObject>
#include <QTimer>
#include <chrono>

#include "platform/common/InstanceMessages.h"

namespace nimbrel {

/// Another process that asks one thing of the instance. It never waits: it reads what is there, and ends with
/// whoever stalls, says what is no request, or says more than one. Main thread.
class LocalInstanceConnection final : public QObject {
  Q_OBJECT

 public:
  /// Owns the socket from now on. `patience` is how long the other may take to say what it wants, and to take
  /// the answer.
  LocalInstanceConnection(QLocalSocket* socket, std::chrono::milliseconds patience);
  ~LocalInstanceConnection() override;

  /// Answers the request, after which the connection ends. Does nothing once it has ended.
  void answer(const IntentReply& reply);

 Q_SIGNALS:
  /// Once at most.
  void requested(const InstanceRequest& request);
  /// Once, at the end; possibly from within `answer`.
  void ended();

 private:
  enum class State { reading, waiting, answering, ended };

  void read();
  void end();

  QLocalSocket* const socket_;
  QTimer patience_;
  InstanceFrameReader reader_{kMaxInstanceRequest};
  State state_ = State::reading;
};

}  // namespace nimbrel
