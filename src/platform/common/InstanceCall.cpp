#include "platform/common/InstanceCall.h"

#include <QDeadlineTimer>
#include <QLocalSocket>

namespace nimbrel {
namespace {

using Outcome = InstanceAnswer::Outcome;

/// For a connection alone, which the system makes without the instance's help unless very many wait.
constexpr std::chrono::milliseconds kConnecting(1'000);

int remaining(const QDeadlineTimer& deadline) {
  return static_cast<int>(deadline.remainingTime());
}

/// Connects, or tells why not: nobody listens, or so many wait that there is no room.
Outcome connectTo(QLocalSocket& socket, const InstanceFolder& folder, const QDeadlineTimer& deadline) {
  if (!folder.isOurs()) return Outcome::nobody;
  socket.connectToServer(folder.socketPath());
  if (socket.waitForConnected(remaining(deadline))) return Outcome::answered;
  return socket.state() == QLocalSocket::ConnectingState ? Outcome::silent : Outcome::nobody;
}

InstanceAnswer awaitReply(QLocalSocket& socket, const QDeadlineTimer& deadline) {
  InstanceFrameReader reader(kMaxInstanceReply);
  for (;;) {
    reader.readFrom(socket);
    if (const auto body = reader.body()) {
      const auto reply = decodedInstanceReply(*body);
      return reply ? InstanceAnswer{Outcome::answered, *reply} : InstanceAnswer{Outcome::broken, {}};
    }
    if (reader.isRefused()) return {Outcome::broken, {}};
    // Writes too, what has not been written yet.
    if (socket.waitForReadyRead(remaining(deadline))) continue;
    if (socket.bytesAvailable() > 0 && !deadline.hasExpired()) continue;
    return {deadline.hasExpired() ? Outcome::silent : Outcome::broken, {}};
  }
}

}  // namespace

InstanceAnswer askInstance(const InstanceFolder& folder, const InstanceRequest& request,
                           std::chrono::milliseconds patience) {
  const QDeadlineTimer deadline(patience);
  QLocalSocket socket;
  if (const Outcome outcome = connectTo(socket, folder, deadline); outcome != Outcome::answered)
    return {outcome, {}};
  socket.write(instanceFrame(request));
  return awaitReply(socket, deadline);
}

bool isInstanceListening(const InstanceFolder& folder) {
  QLocalSocket socket;
  return connectTo(socket, folder, QDeadlineTimer(kConnecting)) != Outcome::nobody;
}

}  // namespace nimbrel
