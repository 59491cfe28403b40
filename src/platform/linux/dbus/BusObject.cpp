#include "platform/linux/dbus/BusObject.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusVariant>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <string_view>

#include "platform/linux/dbus/BusNames.h"
#include "platform/linux/dbus/Introspection.h"

namespace nimbrel {
namespace {

struct Method {
  const char* interface;
  const char* name;
  std::string_view signature;
};

constexpr std::array kMethods{
    Method{bus::kInterface, "Show", ""},
    Method{bus::kInterface, "ShowCollections", ""},
    Method{bus::kInterface, "OpenUrls", "as"},
    Method{bus::kInterface, "Quit", ""},
    Method{bus::kInterface, "CopyLatestClip", ""},
    Method{bus::kInterface, "SearchHistory", "s"},
    Method{bus::kInterface, "ToggleCapture", ""},
    Method{bus::kInterface, "PasteFromCollection", "s"},
    Method{bus::kInterface, "ListCollections", ""},
    Method{bus::kSearchInterface, "GetInitialResultSet", "as"},
    Method{bus::kSearchInterface, "GetSubsearchResultSet", "asas"},
    Method{bus::kSearchInterface, "GetResultMetas", "as"},
    Method{bus::kSearchInterface, "ActivateResult", "sasu"},
    Method{bus::kSearchInterface, "LaunchSearch", "asu"},
};

/// What a string costs to keep, beside its characters.
constexpr qint64 kCostOfString = 64;

const char* interfaceAt(const QString& path) {
  if (path == QLatin1String(bus::kPath)) return bus::kInterface;
  if (path == QLatin1String(bus::kSearchPath)) return bus::kSearchInterface;
  return nullptr;
}

/// The method that a message calls; a message may leave the interface out.
const Method* methodOf(const QDBusMessage& message) {
  const char* const here = interfaceAt(message.path());
  if (!here || (!message.interface().isEmpty() && message.interface() != QLatin1String(here))) return nullptr;
  const auto found = std::find_if(kMethods.begin(), kMethods.end(), [&](const Method& method) {
    return std::string_view(method.interface) == here && message.member() == QLatin1String(method.name);
  });
  return found == kMethods.end() ? nullptr : &*found;
}

qint64 sizeOf(const QVariant& argument) {
  if (argument.userType() == QMetaType::QString) return argument.toString().size() + kCostOfString;
  qint64 size = 0;
  const QStringList strings = argument.toStringList();
  for (const QString& string : strings)
    size += string.size() + kCostOfString;
  return size;
}

qint64 sizeOf(const QVariantList& arguments) {
  qint64 size = 0;
  for (const QVariant& argument : arguments)
    size += sizeOf(argument);
  return size;
}

/// Whether a method is about the program itself.
bool isControl(const QDBusMessage& message) {
  const QString member = message.member();
  return member == QLatin1String("Show") || member == QLatin1String("ShowCollections") ||
         member == QLatin1String("OpenUrls") || member == QLatin1String("Quit");
}

void refuse(const QDBusMessage& message, const QDBusConnection& connection, QDBusError::ErrorType type,
            const QString& why) {
  if (message.isReplyRequired()) connection.send(message.createErrorReply(type, why));
}

QString tooMuch() {
  return QCoreApplication::translate("BusObject", "Demasiadas peticiones seguidas.");
}

}  // namespace

BusObject::BusObject(const Clock& clock, std::function<void(const BusCall&)> accepted)
    : budget_(clock), controlBudget_(clock), accepted_(std::move(accepted)) {}

QString BusObject::introspect(const QString& path) const {
  const char* const here = interfaceAt(path);
  if (!here) return {};
  // The bus wants what stands within the node.
  const QString xml =
      QString::fromUtf8(here == bus::kInterface ? introspection::kProgram : introspection::kSearchProvider);
  const qsizetype begin = xml.indexOf(QLatin1String("<interface"));
  return xml.mid(begin, xml.lastIndexOf(QLatin1String("</node>")) - begin);
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.type() != QDBusMessage::MethodCallMessage) return false;
  const auto tooMany = [&] {
    refuse(message, connection, QDBusError::LimitsExceeded, tooMuch());
    return true;
  };
  // Whoever floods one kind of them leaves the other to the user.
  CallBudget& budget = isControl(message) ? controlBudget_ : budget_;
  if (!budget.admits(message.service())) return tooMany();
  if (message.interface() == QLatin1String(bus::kProperties)) return answerProperties(message, connection);
  const Method* const method = methodOf(message);
  if (!method) return false;
  if (message.signature().toStdString() != method->signature) {
    refuse(message, connection, QDBusError::InvalidArgs,
           QStringLiteral("%1(%2)").arg(message.member(), QLatin1String(method->signature)));
    return true;
  }
  const qint64 size = sizeOf(message.arguments());
  const bool isUrls = message.member() == QLatin1String("OpenUrls");
  const auto room = size > (isUrls ? kMaxUrls : kMaxArguments) ? nullptr : roomFor(size);
  if (!room) return tooMany();
  accepted_({QLatin1String(method->interface), message.member(), message.arguments(), message, room});
  return true;
}

std::shared_ptr<void> BusObject::roomFor(qint64 size) {
  // Only this thread adds.
  if (waiting_->calls >= kMaxCalls || waiting_->size + size > kMaxWaiting) return nullptr;
  ++waiting_->calls;
  waiting_->size += size;
  return {waiting_.get(), [waiting = waiting_, size](void*) {
            --waiting->calls;
            waiting->size -= size;
          }};
}

void BusObject::send(const QDBusMessage& reply) {
  QMetaObject::invokeMethod(
      this, [reply] { QDBusConnection::sessionBus().send(reply); }, Qt::QueuedConnection);
}

bool BusObject::answerProperties(const QDBusMessage& message, const QDBusConnection& connection) const {
  const QString interface = message.arguments().value(0).toString();
  const QString name = message.arguments().value(1).toString();
  if (message.path() != QLatin1String(bus::kPath) || interface != QLatin1String(bus::kInterface))
    return false;
  const QVariant paused(capturePaused_.load());
  if (message.member() == QLatin1String("Get") && name == QLatin1String(bus::kCapturePaused))
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(paused))));
  if (message.member() == QLatin1String("GetAll"))
    return connection.send(
        message.createReply(QVariant(QVariantMap{{QLatin1String(bus::kCapturePaused), paused}})));
  return false;
}

}  // namespace nimbrel
