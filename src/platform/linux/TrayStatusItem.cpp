#include "platform/linux/TrayStatusItem.h"

namespace nimbrel {

TrayStatusItem::TrayStatusItem(std::function<QIcon(const QString&)> icon) : icon_(std::move(icon)) {}

void TrayStatusItem::show(const StatusItemState& state) {
  tray_.setIcon(icon_(state.symbol));
  tray_.setToolTip(state.description);
  tray_.show();
}

void TrayStatusItem::setActivationHandler(std::function<void()> handler) {
  QObject::connect(&tray_, &QSystemTrayIcon::activated, &tray_,
                   [handler = std::move(handler)](QSystemTrayIcon::ActivationReason reason) {
                     // A double click comes with a click of its own.
                     const bool click =
                         reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick;
                     if (click) handler();
                   });
}

}  // namespace nimbrel
