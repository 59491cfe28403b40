#include "platform/linux/dbus/DBusInstanceClient.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDeadlineTimer>
#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/common/InstanceCall.h"
#include "platform/linux/dbus/BusNames.h"
#include "platform/linux/dbus/DesktopNotification.h"

namespace nimbrel {
namespace {

constexpr InstancePatience kPatience;

QDBusMessage callOnce(const QString& method, std::chrono::milliseconds patience,
                      const QVariantList& arguments) {
  auto call = QDBusMessage::createMethodCall(QLatin1String(bus::kService), QLatin1String(bus::kPath),
                                             QLatin1String(bus::kInterface), method);
  call.setArguments(arguments);
  return QDBusConnection::sessionBus().call(call, QDBus::Block, static_cast<int>(patience.count()));
}

bool isStarting(const QDBusMessage& answer) {
  return bus::errorOf(answer.errorName()) == InstanceClient::kUnavailable;
}

bool hasOwner() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  return bus.isConnected() && bus.interface()->isServiceRegistered(QLatin1String(bus::kService));
}

/// What went wrong on the way.
QString errorOf(const QDBusMessage& answer) {
  if (const QString own = bus::errorOf(answer.errorName()); !own.isEmpty()) return own;
  switch (QDBusError(answer).type()) {
    case QDBusError::LimitsExceeded:
      return InstanceClient::kTooManyCalls.toString();
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
      // Or it has gone while it was asked.
      return hasOwner() ? InstanceClient::kNoAnswer.toString() : InstanceClient::kUnavailable.toString();
    default:
      return InstanceClient::kUnavailable.toString();
  }
}

QString methodOf(Intent intent) {
  const auto* const method = std::find_if(bus::kIntentMethods.begin(), bus::kIntentMethods.end(),
                                          [&](const auto& one) { return one.intent == intent; });
  return QLatin1String(method->name);
}

bool hasArgument(Intent intent) {
  return intent == Intent::searchHistory || intent == Intent::pasteFromCollection;
}

/// Whatever of a reply's values is there, by what they are.
IntentReply replyOf(const QDBusMessage& answer) {
  IntentReply reply;
  if (answer.type() != QDBusMessage::ReplyMessage)
    return {.error = errorOf(answer),
            .message = bus::errorOf(answer.errorName()).isEmpty() ? QString() : answer.errorMessage()};
  const auto values = answer.arguments();
  for (const QVariant& value : values) {
    if (value.userType() == QMetaType::QString) reply.message = value.toString();
    if (value.userType() == QMetaType::Bool) reply.paused = value.toBool();
    if (value.userType() == QMetaType::QStringList) reply.texts = value.toStringList();
  }
  return reply;
}

}  // namespace

QDBusMessage DBusInstanceClient::call(const QString& method, std::chrono::milliseconds patience,
                                      const QVariantList& arguments) {
  const QDeadlineTimer deadline(kPatience.starting);
  QDBusMessage answer = callOnce(method, patience, arguments);
  while (isStarting(answer) && !deadline.hasExpired()) {
    std::this_thread::sleep_for(kPatience.pause);
    answer = callOnce(method, patience, arguments);
  }
  return answer;
}

IntentReply DBusInstanceClient::perform(const IntentCall& wanted) {
  return replyOf(call(methodOf(wanted.intent),
                      mayAskUser(wanted.intent) ? kPatience.asking : kPatience.answer,
                      hasArgument(wanted.intent) ? QVariantList{wanted.argument} : QVariantList()));
}

IntentReply DBusInstanceClient::show(bool collections) {
  return replyOf(
      call(collections ? QStringLiteral("ShowCollections") : QStringLiteral("Show"), kPatience.answer));
}

bool DBusInstanceClient::isRunning() {
  return hasOwner();
}

IntentReply DBusInstanceClient::quit() {
  if (!QDBusConnection::sessionBus().isConnected()) return {.error = kUnavailable.toString()};
  const QDeadlineTimer deadline(kPatience.starting);
  // Not without asking whether there is one: the bus would start it for this.
  bool asked = false;
  while (hasOwner() && !deadline.hasExpired()) {
    if (!asked)
      asked = callOnce(QStringLiteral("Quit"), kPatience.answer, {}).type() == QDBusMessage::ReplyMessage;
    std::this_thread::sleep_for(kPatience.pause);
  }
  return hasOwner() ? IntentReply{.error = kNoAnswer.toString()} : IntentReply{};
}

void DBusInstanceClient::notify(const QString& title, const QString& text) {
  sendNotification(title, text);
}

}  // namespace nimbrel
