#pragma once

#include <QHash>
#include <QIcon>
#include <QPalette>

#include "platform/ApplicationCatalog.h"

namespace nimbrel {

/// The icons of applications, each looked up once, when it is first needed. Main thread.
class InstalledIcons final {
 public:
  /// The catalog must outlive this.
  explicit InstalledIcons(const ApplicationCatalog& catalog) : catalog_(catalog) {}

  void setApplications(const QList<InstalledApplication>& applications);

  /// The icon of an application; the given one when it is not installed or has none.
  [[nodiscard]] QIcon icon(const QString& identifier, const QIcon& generic);

 private:
  const ApplicationCatalog& catalog_;
  QHash<QString, InstalledApplication> applications_;
  QHash<QString, QIcon> icons_;
};

/// What stands for an application that has no icon.
[[nodiscard]] QIcon genericApplicationIcon(const QPalette& palette);

}  // namespace nimbrel
