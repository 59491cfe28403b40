#include "platform/common/LocalInstanceHost.h"

#include <QPointer>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <utility>

#include "platform/InstanceClient.h"
#include "platform/common/AnswerOnce.h"

namespace nimbrel {
namespace {

constexpr int kAttempts = 10;

/// All that connect are the user, and counted as one.
QString caller() {
  return QStringLiteral("local");
}

/// So long somebody for whom there is no room may take to say what they want, whatever it is: closed before,
/// the connection would fail them before they read the answer.
constexpr std::chrono::seconds kToTurnAway(1);

/// Of those who only wait for that there are not more than of the others.
void turnAway(const QLocalServer& server, QLocalSocket& socket) {
  socket.write(instanceFrame(failedReply(InstanceClient::kTooManyCalls)));
  socket.flush();
  const auto end = [&socket] {
    socket.abort();
    socket.deleteLater();
  };
  if (server.findChildren<QLocalSocket*>().size() > LocalInstanceHost::kMaxConnections) return end();
  QObject::connect(&socket, &QLocalSocket::readyRead, &socket, end);
  QObject::connect(&socket, &QLocalSocket::disconnected, &socket, &QObject::deleteLater);
  QTimer::singleShot(kToTurnAway, &socket, end);
}

}  // namespace

LocalInstanceHost::LocalInstanceHost(const QString& folder, const InstancePatience& patience,
                                     std::shared_ptr<const Clock> clock)
    : folder_(folder),
      patience_(patience),
      clock_(std::move(clock)),
      budget_(*clock_),
      controlBudget_(*clock_),
      lock_(folder_.lockPath()) {
  // That of a process that has gone is nobody's, but never by its age.
  lock_.setStaleLockTime(0);
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &LocalInstanceHost::accept);
}

void LocalInstanceHost::takeUpSystemRequests(QCoreApplication& application) {
  fileOpenEvents_ = std::make_unique<FileOpenEvents>(
      application, [this](const QStringList& urls) { inbox_.askToOpen(urls); });
  intentBridge_ = std::make_unique<IntentBridge>(
      [this](const IntentCall& call, const IntentAnswer& answer) { perform(call, answer); });
}

InstanceHost::Claim LocalInstanceHost::claim(const QStringList& urls) {
  if (!folder_.prepare()) return Claim::unavailable;
  using Kind = InstanceRequest::Kind;
  const InstanceRequest request{.kind = urls.isEmpty() ? Kind::show : Kind::openUrls, .urls = urls};
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const Held held = takeLock();
    if (held == Held::byNobody) return Claim::unavailable;
    if (held == Held::byUs) return listen();
    const InstanceAnswer answer = askInstance(folder_, request, patience_.answer);
    if (answer.outcome == InstanceAnswer::Outcome::answered && answer.reply.error.isEmpty())
      return Claim::handedOver;
    // It may take up later what it has not answered yet; once is enough.
    if (answer.outcome == InstanceAnswer::Outcome::silent)
      return takeLock() == Held::byUs ? listen() : Claim::unanswered;
    // The other instance may be on its way out, or only about to listen.
    QThread::msleep(static_cast<unsigned long>(patience_.pause.count()));
  }
  return takeDamagedLock() ? listen() : Claim::unanswered;
}

LocalInstanceHost::Held LocalInstanceHost::takeLock() {
  if (lock_.tryLock()) return Held::byUs;
  return lock_.error() == QLockFile::LockFailedError ? Held::byAnother : Held::byNobody;
}

bool LocalInstanceHost::takeDamagedLock() {
  // A power failure may leave a lock that names nobody; one that is only being written has had its time.
  qint64 process = 0;
  QString host;
  QString application;
  if (lock_.getLockInfo(&process, &host, &application) || isInstanceListening(folder_)) return false;
  return lock_.removeStaleLockFile() && lock_.tryLock();
}

InstanceHost::Claim LocalInstanceHost::listen() {
  // Who holds the lock may remove what another has left there.
  QLocalServer::removeServer(folder_.socketPath());
  if (server_.listen(folder_.socketPath())) return Claim::first;
  lock_.unlock();
  return Claim::unavailable;
}

void LocalInstanceHost::accept() {
  while (QLocalSocket* const socket = server_.nextPendingConnection()) {
    if (connections_ >= kMaxConnections) {
      turnAway(server_, *socket);
      continue;
    }
    ++connections_;
    auto* const connection = new LocalInstanceConnection(socket, patience_.unfinished);
    connection->setParent(this);
    connect(connection, &LocalInstanceConnection::requested, this,
            [this, connection](const InstanceRequest& request) { take(*connection, request); });
    connect(connection, &LocalInstanceConnection::ended, this, [this, connection] {
      --connections_;
      connection->deleteLater();
    });
  }
}

void LocalInstanceHost::take(LocalInstanceConnection& connection, const InstanceRequest& request) {
  const bool isIntent = request.kind == InstanceRequest::Kind::perform;
  CallBudget& budget = isIntent ? budget_ : controlBudget_;
  if (!budget.admits(caller())) return connection.answer(failedReply(InstanceClient::kTooManyCalls));
  if (!isIntent) {
    // Answered before it is done: nobody need wait for that.
    connection.answer({});
    return ask(request);
  }
  perform(request.call, [asking = QPointer(&connection)](const IntentReply& reply) {
    if (asking) asking->answer(reply);
  });
}

void LocalInstanceHost::ask(const InstanceRequest& request) {
  switch (request.kind) {
    case InstanceRequest::Kind::show:
      return inbox_.askToShow();
    case InstanceRequest::Kind::showCollections:
      return inbox_.askForCollections();
    case InstanceRequest::Kind::openUrls:
      return inbox_.askToOpen(request.urls);
    case InstanceRequest::Kind::quit:
      return inbox_.askToQuit();
    case InstanceRequest::Kind::perform:
      return;
  }
}

void LocalInstanceHost::perform(const IntentCall& call, const IntentAnswer& answer) {
  const auto once = std::make_shared<AnswerOnce>(answer, failedReply(InstanceClient::kUnavailable));
  // Where nobody takes it up, letting go of it is the answer.
  if (inbox_.requests().perform)
    inbox_.requests().perform(call, [once](const IntentReply& reply) { once->give(reply); });
}

void LocalInstanceHost::setRequests(const InstanceRequests& requests) {
  inbox_.setRequests(requests);
}

}  // namespace nimbrel
