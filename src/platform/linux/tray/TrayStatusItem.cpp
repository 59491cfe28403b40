#include "platform/linux/tray/TrayStatusItem.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QStyleHints>

namespace nimbrel {
namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
Q_LOGGING_CATEGORY(trayLog, "clipboard")

const QString kWatcherObject = QStringLiteral("/StatusNotifierWatcher");

}  // namespace

TrayStatusItem::TrayStatusItem(TrayIcon::DrawSymbol symbol, std::chrono::milliseconds patience)
    : icon_(std::move(symbol)),
      watcher_(kWatcher, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayStatusItem::lookForHost);
  QDBusConnection::sessionBus().connect(kWatcher, kWatcherObject, kWatcher,
                                        QStringLiteral("StatusNotifierHostRegistered"), this,
                                        SLOT(lookForHost()));
  missingTimer_.setSingleShot(true);
  connect(&missingTimer_, &QTimer::timeout, this, &TrayStatusItem::reportMissingTray);
  missingTimer_.start(patience);
}

void TrayStatusItem::show(const StatusItemState& state) {
  const bool first = state_.symbol.isEmpty();
  state_ = state;
  if (first) lookForHost();
  if (notifier_) notifier_->setState(state_);
  if (embedded_) {
    embedded_->setIcon(icon_.icon(state_));
    embedded_->setToolTip(state_.description);
  }
}

void TrayStatusItem::lookForHost() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return embed();
  auto question = QDBusMessage::createMethodCall(
      kWatcher, kWatcherObject, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  question << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
  // Which tray there is, is the desktop's choice.
  question.setAutoStartService(false);
  auto* const call = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* done) {
    done->deleteLater();
    const QDBusPendingReply<QDBusVariant> reply = *done;
    if (reply.isValid() && reply.value().variant().toBool()) return registerWithHost();
    // One that is there and does not answer would be asked by Qt once more, and waited for.
    if (!reply.isError() || reply.error().type() == QDBusError::ServiceUnknown ||
        reply.error().name() == u"org.freedesktop.DBus.Error.NameHasNoOwner")
      return embed();
  });
}

void TrayStatusItem::registerWithHost() {
  embedded_.reset();
  if (!notifier_) notifier_ = std::make_unique<StatusNotifierItem>(icon_, [this] { activate(); });
  notifier_->setState(state_);
  auto request = QDBusMessage::createMethodCall(kWatcher, kWatcherObject, kWatcher,
                                                QStringLiteral("RegisterStatusNotifierItem"));
  request << notifier_->service();
  QDBusConnection::sessionBus().asyncCall(request);
}

void TrayStatusItem::embed() {
  notifier_.reset();
  if (embedded_) return;
  // Qt would show it as a notifier item, and for good, if there were a tray for those by now.
  embedded_ = std::make_unique<QSystemTrayIcon>();
  connect(embedded_.get(), &QSystemTrayIcon::activated, this,
          [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason != QSystemTrayIcon::DoubleClick) activate();
          });
  embedded_->setIcon(icon_.icon(state_));
  embedded_->setToolTip(state_.description);
  embedded_->show();
}

void TrayStatusItem::activate() {
  // The second click of a double click would undo the first.
  const bool isSecond = sinceClick_.isValid() &&
                        sinceClick_.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval();
  sinceClick_.start();
  if (activated_ && !isSecond) activated_();
}

void TrayStatusItem::reportMissingTray() const {
  if (notifier_ || (embedded_ && QSystemTrayIcon::isSystemTrayAvailable())) return;
  qCInfo(trayLog, "No hay bandeja para el icono: el panel se abre con su atajo o con otro arranque");
}

}  // namespace nimbrel
