#pragma once

#include <gmock/gmock.h>

#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <chrono>
#include <memory>
#include <optional>

#include "platform/common/InstanceCall.h"
#include "platform/common/LocalInstanceHost.h"
#include "support/Fakes.h"

namespace nimbrel::testing {

/// Nothing takes as long; whoever waits goes on as soon as it has happened.
inline constexpr int kGenerous = 20'000;

/// Does something that waits for the instance in a thread of its own, as if it were another process, while
/// the instance goes on in this one.
template <typename Work>
auto elsewhere(const Work& work) {
  std::optional<std::invoke_result_t<Work>> result;
  const std::unique_ptr<QThread> thread(QThread::create([&] { result = work(); }));
  thread->start();
  EXPECT_TRUE(QTest::qWaitFor([&] { return thread->isFinished(); }, kGenerous));
  thread->wait();
  return *result;
}

/// Another process that says whatever it likes.
class Stranger final {
 public:
  explicit Stranger(const InstanceFolder& folder, const QByteArray& says = {}) {
    socket.connectToServer(folder.socketPath());
    EXPECT_EQ(socket.state(), QLocalSocket::ConnectedState);
    say(says);
  }
  void say(const QByteArray& bytes) {
    socket.write(bytes);
    socket.flush();
  }
  /// Whether the instance ends the connection.
  [[nodiscard]] bool isDropped() {
    return QTest::qWaitFor([this] { return socket.state() == QLocalSocket::UnconnectedState; }, kGenerous);
  }
  /// What the instance answers; nothing when it ends the connection without an answer.
  [[nodiscard]] std::optional<IntentReply> answer() {
    const auto isOver = [this] {
      reader_.readFrom(socket);
      return reader_.body() || socket.state() == QLocalSocket::UnconnectedState;
    };
    EXPECT_TRUE(QTest::qWaitFor(isOver, kGenerous));
    return reader_.body() ? decodedInstanceReply(*reader_.body()) : std::nullopt;
  }

  QLocalSocket socket;

 private:
  InstanceFrameReader reader_{kMaxInstanceReply};
};

class LocalInstanceFixture : public ::testing::Test {
 protected:
  /// Waits for whatever comes, and does not rest long between two attempts.
  static InstancePatience patient() {
    using namespace std::chrono_literals;
    return {.answer = 60s, .asking = 60s, .starting = 60s, .pause = 10ms, .unfinished = 60s};
  }
  /// Has no time to lose.
  static InstancePatience impatient() {
    using namespace std::chrono_literals;
    return {.answer = 10ms, .asking = 10ms, .starting = 10ms, .pause = 1ms, .unfinished = 10ms};
  }
  [[nodiscard]] std::unique_ptr<LocalInstanceHost> makeHost(
      const InstancePatience& patience = patient()) const {
    return std::make_unique<LocalInstanceHost>(path(), patience, clock);
  }
  [[nodiscard]] QString path() const { return directory.path(); }

  const QTemporaryDir directory;
  const InstanceFolder folder{directory.path()};
  /// Stands still, so that what was asked too often stays so.
  const std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
};

/// Keeps every answer that is asked for.
inline InstanceRequests keeping(QList<IntentAnswer>& waiting) {
  InstanceRequests requests;
  requests.perform = [&waiting](const IntentCall&, const IntentAnswer& answer) { waiting.append(answer); };
  return requests;
}

/// Answers every intent at once with the same.
inline InstanceRequests answering(const IntentReply& reply, QList<IntentCall>* calls = nullptr) {
  InstanceRequests requests;
  requests.perform = [reply, calls](const IntentCall& asked, const IntentAnswer& answer) {
    if (calls) calls->append(asked);
    answer(reply);
  };
  return requests;
}

inline InstanceRequest performRequest(Intent intent, const QString& argument = {}) {
  return {.kind = InstanceRequest::Kind::perform, .call = {intent, argument}};
}

}  // namespace nimbrel::testing
