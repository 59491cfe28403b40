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

/// What a call without arguments costs to keep.
constexpr qint64 kCostOfCall = 256;
/// And what a string does, beside its characters.
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
  qint64 size = kCostOfCall;
  for (const QVariant& argument : arguments)
    size += sizeOf(argument);
  return size;
}

/// The first of these URLs, as many as may wait.
QStringList boundedUrls(const QStringList& urls) {
  QStringList bounded;
  qint64 size = 0;
  for (const QString& url : urls) {
    size += url.size() + kCostOfString;
    if (size > BusObject::kMaxUrls) break;
    bounded.append(url);
  }
  return bounded;
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
    : budget_(clock), accepted_(std::move(accepted)) {}

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
  if (!budget_.admits(message.service())) {
    refuse(message, connection, QDBusError::LimitsExceeded, tooMuch());
    return true;
  }
  if (message.interface() == QLatin1String(bus::kProperties)) return answerProperties(message, connection);
  const Method* const method = methodOf(message);
  if (!method) return false;
  BusCall call{QLatin1String(method->interface), message.member(), message.arguments(), message};
  if (message.signature().toStdString() != method->signature) {
    refuse(message, connection, QDBusError::InvalidArgs,
           QStringLiteral("%1(%2)").arg(message.member(), QLatin1String(method->signature)));
    return true;
  }
  if (call.member == QLatin1String("OpenUrls"))
    call.arguments = {boundedUrls(call.arguments.value(0).toStringList())};
  if (!hasRoomFor(sizeOf(call.arguments))) {
    refuse(message, connection, QDBusError::LimitsExceeded, tooMuch());
    return true;
  }
  accepted_(call);
  return true;
}

bool BusObject::hasRoomFor(qint64 size) {
  if (waiting_ + size > kMaxWaiting) return false;
  waiting_ += size;
  return true;
}

void BusObject::settle(const BusCall& call) {
  waiting_ -= sizeOf(call.arguments);
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
