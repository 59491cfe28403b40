#pragma once

#include <QIcon>
#include <QList>
#include <QString>

namespace nimbrel {

/// An application that the user can start.
struct InstalledApplication final {
  /// The same as `RunningApplication::identifier` when it runs.
  QString identifier;
  /// In the user's language.
  QString name;
  /// Where its icon is, in the system's own terms.
  QString icon;

  bool operator==(const InstalledApplication&) const = default;
};

/// The applications that are installed.
class ApplicationCatalog {
 public:
  virtual ~ApplicationCatalog() = default;

  /// All of them, in no order; those that the user does not see in menus are left out. *Waits* for the disk;
  /// any thread.
  [[nodiscard]] virtual QList<InstalledApplication> applications() = 0;

  /// The icon of one of them; a null icon when it cannot be found. Main thread.
  [[nodiscard]] virtual QIcon icon(const InstalledApplication& application) const = 0;
};

}  // namespace nimbrel
