#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QPalette>
#include <QSet>
#include <QSize>
#include <QStringList>
#include <QTimer>

#include "platform/ApplicationCatalog.h"

namespace nimbrel {

/// The icons of applications in one size. Each is looked up once, after it was first asked for, and one at a
/// time, so that nobody waits while a list is painted. Main thread.
class InstalledIcons final : public QObject {
  Q_OBJECT

 public:
  /// The catalog must outlive this; the size is in device-independent pixels.
  InstalledIcons(const ApplicationCatalog& catalog, const QSize& size, QObject* parent = nullptr);

  /// Tells what is installed by now.
  void setApplications(const QList<InstalledApplication>& applications);

  /// The icon of an application, as far as it is known by now; the given one when it is not, or when the
  /// application is not installed or has none.
  [[nodiscard]] QIcon icon(const QString& identifier, const QIcon& generic);

 Q_SIGNALS:
  /// Icons that were asked for are known now.
  void iconsFound();
  /// Icons of applications were asked for, for the first time, that are not installed as far as this knows;
  /// told once for all that are asked for at once.
  void unknownAskedFor();

 private:
  void findNext();

  const ApplicationCatalog& catalog_;
  const QSize size_;
  QHash<QString, InstalledApplication> applications_;
  QHash<QString, QIcon> icons_;
  QStringList wanted_;
  QSet<QString> unknown_;
  QTimer timer_;
  QTimer asking_;
};

/// What stands for an application that has no icon.
[[nodiscard]] QIcon genericApplicationIcon(const QPalette& palette);

}  // namespace nimbrel
