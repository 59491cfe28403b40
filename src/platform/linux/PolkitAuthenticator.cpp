#include "platform/linux/PolkitAuthenticator.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QMap>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>
#include <QVariantMap>

namespace nimbrel {

// The structures of org.freedesktop.PolicyKit1.Authority.
struct PolkitSubject {
  QString kind;
  QVariantMap details;
};
using PolkitDetails = QMap<QString, QString>;
struct PolkitResult {
  bool authorized = false;
  bool challenge = false;
  PolkitDetails details;
};

static QDBusArgument& operator<<(QDBusArgument& argument, const PolkitSubject& subject) {
  argument.beginStructure();
  argument << subject.kind << subject.details;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, PolkitSubject& subject) {
  argument.beginStructure();
  argument >> subject.kind >> subject.details;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, PolkitResult& result) {
  argument.beginStructure();
  argument >> result.authorized >> result.challenge >> result.details;
  argument.endStructure();
  return argument;
}

}  // namespace nimbrel

Q_DECLARE_METATYPE(nimbrel::PolkitSubject)

namespace nimbrel {
namespace {

constexpr const char* kService = "org.freedesktop.PolicyKit1";
constexpr const char* kPath = "/org/freedesktop/PolicyKit1/Authority";
constexpr const char* kAuthority = "org.freedesktop.PolicyKit1.Authority";
constexpr quint32 kAllowUserInteraction = 1;

QString noBus() {
  return QStringLiteral("no hay bus del sistema");
}

QDBusMessage methodCall(const char* interface, const char* method) {
  return QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                        QLatin1String(interface), QLatin1String(method));
}

/// Any process may own a bus name for a moment; what it answers may be anything.
std::optional<PolkitResult> resultIn(const QDBusMessage& reply) {
  if (reply.signature() != u"(bba{ss})") return std::nullopt;
  PolkitResult result;
  reply.arguments().value(0).value<QDBusArgument>() >> result;
  return result;
}

AuthenticationReply replyOf(const QDBusMessage& message) {
  using Outcome = AuthenticationReply::Outcome;
  const QString error = message.errorMessage();
  // Polkit was not able or willing to ask; where it has gone meanwhile, the user may have been asked already.
  if (message.errorName().startsWith(QStringLiteral("org.freedesktop.PolicyKit1.Error")))
    return {Outcome::unavailable, error};
  if (message.type() != QDBusMessage::ReplyMessage) return {Outcome::refused, error};
  const auto result = resultIn(message);
  if (!result) return {Outcome::refused, QStringLiteral("respuesta desconocida de polkit")};
  if (result->authorized) return {Outcome::proven, {}};
  // The user would have to be asked, and has not been.
  if (result->challenge)
    return {Outcome::unavailable, QStringLiteral("no hay agente de autenticación de polkit")};
  return {Outcome::refused, {}};
}

}  // namespace

void PolkitAuthenticator::canAuthenticate(std::function<void(std::optional<QString>)> done) {
  // Connecting to a bus waits for its first answer.
  const auto answered = std::make_shared<bool>(false);
  const auto answer = [answered, done = std::move(done)](std::optional<QString> obstacle) {
    if (!std::exchange(*answered, true)) done(std::move(obstacle));
  };
  QTimer::singleShot(patience_.answer, this, [answer] { answer(QStringLiteral("polkit no contesta")); });
  const auto connected = [authenticator = QPointer(this), answer] {
    if (authenticator) authenticator->askWhetherThere(answer);
  };
  QThreadPool::globalInstance()->start([connected] {
    static_cast<void>(QDBusConnection::systemBus().isConnected());
    if (auto* const application = QCoreApplication::instance())
      QMetaObject::invokeMethod(application, connected, Qt::QueuedConnection);
  });
}

void PolkitAuthenticator::askWhetherThere(std::function<void(std::optional<QString>)> done) {
  const QDBusConnection bus = QDBusConnection::systemBus();
  if (!bus.isConnected()) return done(noBus());
  auto question = methodCall("org.freedesktop.DBus.Properties", "Get");
  question << QLatin1String(kAuthority) << QStringLiteral("BackendName");
  auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [done = std::move(done)](QDBusPendingCallWatcher* call) {
            call->deleteLater();
            const QString error = call->error().message();
            done(call->isError() ? std::optional(error) : std::nullopt);
          });
}

void PolkitAuthenticator::authenticate(const AuthenticationReason& reason,
                                       std::function<void(AuthenticationReply)> done) {
  qDBusRegisterMetaType<PolkitSubject>();
  qDBusRegisterMetaType<PolkitDetails>();
  const QDBusConnection bus = QDBusConnection::systemBus();
  // A call on a bus that is gone is never answered.
  if (!bus.isConnected()) {
    const AuthenticationReply reply{AuthenticationReply::Outcome::unavailable, noBus()};
    QMetaObject::invokeMethod(
        this, [reply, done = std::move(done)] { done(reply); }, Qt::QueuedConnection);
    return;
  }
  // Unlike a process id, the name on the bus cannot come to mean somebody else.
  const PolkitSubject subject{QStringLiteral("system-bus-name"),
                              {{QStringLiteral("name"), bus.baseService()}}};
  const QString cancellation = QStringLiteral("nimbrel-%1").arg(++asked_);
  auto question = methodCall(kAuthority, "CheckAuthorization");
  question << QVariant::fromValue(subject) << QStringLiteral("app.nimbrel.Nimbrel.") + reason.identifier
           << QVariant::fromValue(PolkitDetails()) << kAllowUserInteraction << cancellation;
  const auto answered = std::make_shared<bool>(false);
  const auto answer = [answered, done = std::move(done)](const AuthenticationReply& reply) {
    if (!std::exchange(*answered, true)) done(reply);
  };
  QTimer::singleShot(patience_.user, this, [this, answered, answer, cancellation] {
    if (*answered) return;
    // The user was too slow. The prompt must not stay behind.
    cancel(cancellation);
    answer({AuthenticationReply::Outcome::refused, {}});
  });
  // The bus is to be more patient than we are.
  const auto patience = static_cast<int>(2 * patience_.user.count());
  auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(question, patience), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [answer](QDBusPendingCallWatcher* call) {
    call->deleteLater();
    answer(replyOf(call->reply()));
  });
}

void PolkitAuthenticator::cancel(const QString& cancellation) {
  auto request = methodCall(kAuthority, "CancelCheckAuthorization");
  request << cancellation;
  QDBusConnection::systemBus().asyncCall(request);
}

}  // namespace nimbrel
