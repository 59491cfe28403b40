#pragma once

#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <chrono>
#include <memory>

#include "platform/StatusItem.h"
#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/linux/tray/TrayIcon.h"

namespace nimbrel {

/// The status item in whatever tray the desktop has, now or later: one that shows StatusNotifierItems, else
/// one that embeds windows (System Tray Protocol). Where there is none after a while, the log says so, once.
class TrayStatusItem final : public QObject, public StatusItem {
  Q_OBJECT

 public:
  explicit TrayStatusItem(TrayIcon::DrawSymbol symbol,
                          std::chrono::milliseconds patience = std::chrono::seconds(5));

  void show(const StatusItemState& state) override;
  void setActivationHandler(std::function<void()> handler) override { activated_ = std::move(handler); }

 private Q_SLOTS:
  /// Asks whether there is a tray that shows notifier items, and takes that or the other kind.
  void lookForHost();

 private:
  void registerWithHost();
  void embed();
  void reportMissingTray() const;
  void activate();

  TrayIcon icon_;
  std::function<void()> activated_;
  StatusItemState state_;
  QDBusServiceWatcher watcher_;
  std::unique_ptr<StatusNotifierItem> notifier_;
  std::unique_ptr<QSystemTrayIcon> embedded_;
  QTimer missingTimer_;
  QElapsedTimer sinceClick_;
};

}  // namespace nimbrel
