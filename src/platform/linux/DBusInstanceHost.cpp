#include "platform/linux/DBusInstanceHost.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QThread>
#include <utility>

namespace nimbrel {
namespace {

constexpr const char* kService = "app.nimbrel.Nimbrel";
constexpr const char* kPath = "/app/nimbrel/Nimbrel";

/// The second start waits for the first to answer, but not for one that hangs.
constexpr int kCallTimeoutMilliseconds = 2000;
constexpr int kAttempts = 10;
constexpr unsigned long kAttemptPause = 100;

}  // namespace

DBusInstanceHost::~DBusInstanceHost() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.unregisterObject(QLatin1String(kPath));
  bus.unregisterService(QLatin1String(kService));
}

InstanceHost::Claim DBusInstanceHost::claim() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return Claim::unavailable;
  // The object comes first: whoever finds the name taken must find somebody behind it.
  bus.registerObject(QLatin1String(kPath), this, QDBusConnection::ExportScriptableSlots);
  if (bus.registerService(QLatin1String(kService))) return Claim::first;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (askToShow()) {
      bus.unregisterObject(QLatin1String(kPath));
      return Claim::handedOver;
    }
    // The other instance may be on its way out.
    if (bus.registerService(QLatin1String(kService))) return Claim::first;
    QThread::msleep(kAttemptPause);
  }
  return Claim::unanswered;
}

bool DBusInstanceHost::askToShow() {
  const QDBusMessage call = QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                                           QLatin1String(kService), QStringLiteral("Show"));
  const QDBusMessage answer =
      QDBusConnection::sessionBus().call(call, QDBus::Block, kCallTimeoutMilliseconds);
  return answer.type() == QDBusMessage::ReplyMessage;
}

void DBusInstanceHost::setShowHandler(std::function<void()> handler) {
  showHandler_ = std::move(handler);
  if (showHandler_ && std::exchange(showRequested_, false)) showHandler_();
}

void DBusInstanceHost::Show() {
  if (!showHandler_) {
    showRequested_ = true;
    return;
  }
  // After the answer is on its way: the caller need not wait for the panel.
  QMetaObject::invokeMethod(this, showHandler_, Qt::QueuedConnection);
}

}  // namespace nimbrel
