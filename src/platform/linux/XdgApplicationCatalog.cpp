#include "platform/linux/XdgApplicationCatalog.h"

#include <QFileInfo>

namespace nimbrel {

QList<InstalledApplication> XdgApplicationCatalog::applications() {
  // What was installed meanwhile must be found, here and when it is in front.
  entries_.load();
  return entries_.shown();
}

QIcon XdgApplicationCatalog::icon(const InstalledApplication& application) const {
  if (application.icon.isEmpty()) return {};
  if (!application.icon.startsWith(u'/')) return QIcon::fromTheme(application.icon);
  return QFileInfo(application.icon).isFile() ? QIcon(application.icon) : QIcon();
}

}  // namespace nimbrel
