#include "platform/linux/XdgApplicationCatalog.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// An icon that belongs to no theme (Icon Theme Specification 0.13, "pixmaps").
QIcon unthemedIcon(const QString& name) {
  for (const auto* const suffix : {u"", u".svg", u".png", u".xpm"}) {
    const QString path = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                u"pixmaps/"_s + name + QString::fromUtf16(suffix));
    if (!path.isEmpty()) return QIcon(path);
  }
  return {};
}

}  // namespace

QList<InstalledApplication> XdgApplicationCatalog::applications() {
  // What was installed meanwhile must be found, here and when it is in front.
  entries_.load();
  return entries_.shown();
}

QIcon XdgApplicationCatalog::icon(const InstalledApplication& application) const {
  if (application.icon.isEmpty()) return {};
  if (application.icon.startsWith(u'/'))
    return QFileInfo(application.icon).isFile() ? QIcon(application.icon) : QIcon();
  const QIcon themed = QIcon::fromTheme(application.icon);
  return themed.isNull() ? unthemedIcon(application.icon) : themed;
}

}  // namespace nimbrel
