#pragma once

#include <QDBusObjectPath>
#include <QImage>
#include <QObject>
#include <functional>

#include "platform/linux/tray/TrayIcon.h"

namespace nimbrel {

/// A picture as a StatusNotifierItem has it (freedesktop.org): ARGB, each pixel in network byte order.
struct NotifierPixmap final {
  int width = 0;
  int height = 0;
  QByteArray pixels;
};
using NotifierPixmaps = QList<NotifierPixmap>;

/// What stands beside the pointer.
struct NotifierToolTip final {
  QString iconName;
  NotifierPixmaps icon;
  QString title;
  QString text;
};

/// The status item as an object on the session bus (StatusNotifierItem, freedesktop.org), which any tray that
/// watches for such items shows.
class StatusNotifierItem final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
  Q_PROPERTY(QString Category READ category)
  Q_PROPERTY(QString Id READ id)
  Q_PROPERTY(QString Title READ title)
  Q_PROPERTY(QString Status READ status)
  Q_PROPERTY(int WindowId READ windowId)
  Q_PROPERTY(QString IconName READ iconName)
  Q_PROPERTY(nimbrel::NotifierPixmaps IconPixmap READ iconPixmap)
  Q_PROPERTY(QString IconAccessibleDesc READ title)
  Q_PROPERTY(nimbrel::NotifierToolTip ToolTip READ toolTip)
  Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
  Q_PROPERTY(QDBusObjectPath Menu READ menu)

 public:
  /// The icon outlives this.
  StatusNotifierItem(const TrayIcon& icon, std::function<void()> activated);
  ~StatusNotifierItem() override;

  void setState(const StatusItemState& state);

  /// The object's name on the bus, for the tray.
  [[nodiscard]] QString service() const { return service_; }

  [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
  [[nodiscard]] QString id() const { return QStringLiteral("app.nimbrel.Nimbrel"); }
  [[nodiscard]] QString title() const { return state_.description; }
  [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
  [[nodiscard]] int windowId() const { return 0; }
  [[nodiscard]] QString iconName() const { return {}; }
  [[nodiscard]] NotifierPixmaps iconPixmap() const;
  [[nodiscard]] NotifierToolTip toolTip() const;
  [[nodiscard]] bool itemIsMenu() const { return false; }
  /// The path that trays know as "there is no menu".
  [[nodiscard]] QDBusObjectPath menu() const { return QDBusObjectPath(QStringLiteral("/NO_DBUSMENU")); }

 public Q_SLOTS:
  // The D-Bus methods; a click, whichever button.
  Q_SCRIPTABLE void Activate(int x, int y);
  Q_SCRIPTABLE void SecondaryActivate(int x, int y);
  Q_SCRIPTABLE void ContextMenu(int x, int y);
  Q_SCRIPTABLE void Scroll(int delta, const QString& orientation);

 Q_SIGNALS:
  Q_SCRIPTABLE void NewTitle();
  Q_SCRIPTABLE void NewIcon();
  Q_SCRIPTABLE void NewToolTip();
  Q_SCRIPTABLE void NewStatus(const QString& status);

 private:
  const TrayIcon& icon_;
  std::function<void()> activated_;
  StatusItemState state_;
  QString service_;
};

}  // namespace nimbrel

Q_DECLARE_METATYPE(nimbrel::NotifierPixmap)
Q_DECLARE_METATYPE(nimbrel::NotifierToolTip)
