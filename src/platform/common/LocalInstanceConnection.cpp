#include "platform/common/LocalInstanceConnection.h"

#include <utility>

namespace nimbrel {
namespace {

/// What is read ahead of us, in bytes.
constexpr qint64 kReadBuffer = 65'536;

}  // namespace

LocalInstanceConnection::LocalInstanceConnection(QLocalSocket* socket, std::chrono::milliseconds patience)
    : socket_(socket) {
  socket_->setParent(this);
  socket_->setReadBufferSize(kReadBuffer);
  connect(socket_, &QLocalSocket::readyRead, this, &LocalInstanceConnection::read);
  connect(socket_, &QLocalSocket::disconnected, this, &LocalInstanceConnection::end);
  patience_.setSingleShot(true);
  patience_.setInterval(patience);
  connect(&patience_, &QTimer::timeout, this, &LocalInstanceConnection::end);
  patience_.start();
}

LocalInstanceConnection::~LocalInstanceConnection() {
  socket_->disconnect(this);
}

void LocalInstanceConnection::read() {
  if (state_ == State::reading) reader_.readFrom(*socket_);
  const auto body = reader_.body();
  const bool tooMuch = body && socket_->bytesAvailable() > 0;
  if (reader_.isRefused() || tooMuch) return end();
  if (state_ != State::reading || !body) return;
  const auto request = decodedInstanceRequest(*body);
  if (!request) return end();
  state_ = State::waiting;
  patience_.stop();
  Q_EMIT requested(*request);
}

void LocalInstanceConnection::answer(const IntentReply& reply) {
  if (state_ != State::waiting) return;
  state_ = State::answering;
  patience_.start();
  socket_->write(instanceFrame(reply));
  // As much as goes now: the program may be about to end.
  socket_->flush();
  socket_->disconnectFromServer();
}

void LocalInstanceConnection::end() {
  if (std::exchange(state_, State::ended) == State::ended) return;
  patience_.stop();
  socket_->abort();
  Q_EMIT ended();
}

}  // namespace nimbrel
