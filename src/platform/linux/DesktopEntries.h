#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <atomic>
#include <mutex>

namespace nimbrel {

/// What the desktop knows about an application.
struct DesktopEntry final {
  /// The desktop-file id without its suffix; for well-known password managers the identifier under which the
  /// ignore list knows them.
  QString identifier;
  QString name;

  bool operator==(const DesktopEntry&) const = default;
};

/// The applications that are installed, by desktop-file id and window class (freedesktop.org's desktop
/// entries: keys Name and StartupWMClass). Read once; any thread.
class DesktopEntries final {
 public:
  /// `folders` hold the "applications" folders, most important first.
  explicit DesktopEntries(QStringList folders) : folders_(std::move(folders)) {}

  /// The folders of this user's session.
  [[nodiscard]] static QStringList userFolders();

  /// The application with this id or window class; one that has no desktop file, or any before the files have
  /// been read, is named by its class. Never waits.
  [[nodiscard]] DesktopEntry find(const QString& applicationId, const QString& windowClass);

  /// Reads the files; takes as long as the disk does.
  void load();

 private:
  void readFolder(const QString& folder);

  const QStringList folders_;
  std::once_flag once_;
  std::atomic<bool> loaded_ = false;
  /// By lower-case id and by lower-case window class.
  QHash<QString, DesktopEntry> entries_;
};

}  // namespace nimbrel
