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
constexpr int kCallTimeoutMilliseconds = 5000;
constexpr int kAttempts = 10;
constexpr unsigned long kAttemptPause = 100;

/// What is kept for later of URLs that come faster than they are answered, in UTF-16 units: more than any
/// that is not refused.
constexpr qsizetype kMaxWaitingCharacters = 8'000'000;
/// Of an empty one.
constexpr qsizetype kCostOfUrl = 64;

}  // namespace

DBusInstanceHost::~DBusInstanceHost() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.unregisterObject(QLatin1String(kPath));
  bus.unregisterService(QLatin1String(kService));
}

InstanceHost::Claim DBusInstanceHost::claim(const QStringList& urls) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return Claim::unavailable;
  // The object comes first: whoever finds the name taken must find somebody behind it.
  bus.registerObject(QLatin1String(kPath), this, QDBusConnection::ExportScriptableSlots);
  if (bus.registerService(QLatin1String(kService))) return Claim::first;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const QDBusMessage answer = handOver(urls);
    if (answer.type() == QDBusMessage::ReplyMessage) {
      bus.unregisterObject(QLatin1String(kPath));
      return Claim::handedOver;
    }
    // The other instance may be on its way out.
    if (bus.registerService(QLatin1String(kService))) return Claim::first;
    // It may take up later what it has not answered yet; once is enough.
    if (answer.errorName() == QDBusError::errorString(QDBusError::NoReply)) return Claim::unanswered;
    QThread::msleep(kAttemptPause);
  }
  return Claim::unanswered;
}

QDBusMessage DBusInstanceHost::handOver(const QStringList& urls) {
  const QString method = urls.isEmpty() ? QStringLiteral("Show") : QStringLiteral("OpenUrls");
  QDBusMessage call = QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                                     QLatin1String(kService), method);
  if (!urls.isEmpty()) call << urls;
  return QDBusConnection::sessionBus().call(call, QDBus::Block, kCallTimeoutMilliseconds);
}

void DBusInstanceHost::setRequests(const InstanceRequests& requests) {
  requests_ = requests;
  deliver();
}

void DBusInstanceHost::Show() {
  showRequested_ = true;
  QMetaObject::invokeMethod(this, &DBusInstanceHost::deliver, Qt::QueuedConnection);
}

void DBusInstanceHost::OpenUrls(const QStringList& urls) {
  for (const QString& url : urls) {
    const qsizetype cost = url.size() + kCostOfUrl;
    if (urlCharacters_ + cost > kMaxWaitingCharacters) break;
    urlCharacters_ += cost;
    urls_.append(url);
  }
  QMetaObject::invokeMethod(this, &DBusInstanceHost::deliver, Qt::QueuedConnection);
}

void DBusInstanceHost::Quit() {
  quitRequested_ = true;
  QMetaObject::invokeMethod(this, &DBusInstanceHost::deliver, Qt::QueuedConnection);
}

void DBusInstanceHost::deliver() {
  if (requests_.openUrls && !urls_.isEmpty()) {
    urlCharacters_ = 0;
    requests_.openUrls(std::exchange(urls_, {}));
  }
  if (requests_.show && std::exchange(showRequested_, false)) requests_.show();
  if (requests_.quit && std::exchange(quitRequested_, false)) requests_.quit();
}

}  // namespace nimbrel
