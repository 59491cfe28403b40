#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <mutex>

#include "platform/ApplicationCatalog.h"

namespace nimbrel {

/// What the desktop knows about an application.
struct DesktopEntry final {
  /// The desktop-file id without its suffix; for well-known password managers the identifier under which the
  /// ignore list knows them.
  QString identifier;
  QString name;

  bool operator==(const DesktopEntry&) const = default;
};

/// What a window says of its application in WM_CLASS (ICCCM 4.1.2.5).
struct WindowClass final {
  QString className;
  QString instance = {};
};

/// The applications that are installed, by desktop-file id and window class (freedesktop.org's desktop
/// entries). An application whose file states no window class is also known by the last part of its id and by
/// its program's name. Any thread.
class DesktopEntries final {
 public:
  /// `folders` hold the "applications" folders, most important first.
  explicit DesktopEntries(QStringList folders) : folders_(std::move(folders)) {}

  /// The folders of this user's session.
  [[nodiscard]] static QStringList userFolders();

  /// The application with this id or window class; one that has no desktop file, or any before the files have
  /// been read, is named by its class. Never waits.
  [[nodiscard]] DesktopEntry find(const QString& applicationId, const WindowClass& window) const;

  /// Reads the files, again when they have been read before; takes as long as the disk does.
  void load();

  /// The applications that menus show, as they were when the files were last read.
  [[nodiscard]] QList<InstalledApplication> shown() const;

 private:
  struct Table;

  [[nodiscard]] std::shared_ptr<const Table> table() const;

  const QStringList folders_;
  mutable std::mutex mutex_;
  /// Null until the files have been read.
  std::shared_ptr<const Table> table_;
};

}  // namespace nimbrel
