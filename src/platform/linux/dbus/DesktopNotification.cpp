#include "platform/linux/dbus/DesktopNotification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace nimbrel {

void sendNotification(const QString& title, const QString& text) {
  const QString server = QStringLiteral("org.freedesktop.Notifications");
  auto call = QDBusMessage::createMethodCall(server, QStringLiteral("/org/freedesktop/Notifications"), server,
                                             QStringLiteral("Notify"));
  constexpr int kDefaultTime = -1;
  call << QStringLiteral("Nimbrel") << 0U << QStringLiteral("app.nimbrel.Nimbrel") << title << text
       << QStringList() << QVariantMap{{QStringLiteral("transient"), true}} << kDefaultTime;
  QDBusConnection::sessionBus().send(call);
}

}  // namespace nimbrel
