#include "platform/linux/tray/StatusNotifierItem.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QtEndian>

namespace nimbrel {

static QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap) {
  argument.beginStructure();
  argument << pixmap.width << pixmap.height << pixmap.pixels;
  argument.endStructure();
  return argument;
}
static const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap) {
  argument.beginStructure();
  argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
  argument.endStructure();
  return argument;
}
static QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& tip) {
  argument.beginStructure();
  argument << tip.iconName << tip.icon << tip.title << tip.text;
  argument.endStructure();
  return argument;
}
static const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& tip) {
  argument.beginStructure();
  argument >> tip.iconName >> tip.icon >> tip.title >> tip.text;
  argument.endStructure();
  return argument;
}

namespace {

const QString kObject = QStringLiteral("/StatusNotifierItem");

NotifierPixmap encoded(const QPixmap& pixmap) {
  const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
  NotifierPixmap result{image.width(), image.height(), QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
  qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / 4, result.pixels.data());
  return result;
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(const TrayIcon& icon, std::function<void()> activated)
    : icon_(icon),
      activated_(std::move(activated)),
      service_(QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid())) {
  qDBusRegisterMetaType<NotifierPixmap>();
  qDBusRegisterMetaType<NotifierPixmaps>();
  qDBusRegisterMetaType<NotifierToolTip>();
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.registerObject(kObject, this,
                     QDBusConnection::ExportAllProperties | QDBusConnection::ExportScriptableSlots |
                         QDBusConnection::ExportScriptableSignals);
  bus.registerService(service_);
}

StatusNotifierItem::~StatusNotifierItem() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.unregisterService(service_);
  bus.unregisterObject(kObject);
}

void StatusNotifierItem::setState(const StatusItemState& state) {
  if (state == state_) return;
  state_ = state;
  Q_EMIT NewTitle();
  Q_EMIT NewIcon();
  Q_EMIT NewToolTip();
}

NotifierPixmaps StatusNotifierItem::iconPixmap() const {
  NotifierPixmaps pixmaps;
  for (const int side : TrayIcon::kSides)
    pixmaps.append(encoded(icon_.pixmap(state_, side)));
  return pixmaps;
}

NotifierToolTip StatusNotifierItem::toolTip() const {
  return {.iconName = {}, .icon = {}, .title = state_.description, .text = {}};
}

void StatusNotifierItem::Activate(int, int) {
  QMetaObject::invokeMethod(this, activated_, Qt::QueuedConnection);
}

void StatusNotifierItem::SecondaryActivate(int x, int y) {
  Activate(x, y);
}

void StatusNotifierItem::ContextMenu(int x, int y) {
  Activate(x, y);
}

void StatusNotifierItem::Scroll(int, const QString&) {}

}  // namespace nimbrel
