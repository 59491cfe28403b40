#pragma once

#include <QIcon>
#include <QSystemTrayIcon>

#include "platform/StatusItem.h"

namespace nimbrel {

/// The status item as a tray icon, in a StatusNotifierItem host or an XEmbed tray, whichever the desktop has.
class TrayStatusItem final : public StatusItem {
 public:
  explicit TrayStatusItem(std::function<QIcon(const QString&)> icon);

  void show(const StatusItemState& state) override;
  void setActivationHandler(std::function<void()> handler) override;

 private:
  std::function<QIcon(const QString&)> icon_;
  QSystemTrayIcon tray_;
};

}  // namespace nimbrel
