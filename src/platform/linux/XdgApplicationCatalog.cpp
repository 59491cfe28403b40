#include "platform/linux/XdgApplicationCatalog.h"

#include <QFileInfo>
#include <QImageReader>
#include <QStandardPaths>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// A picture that can be an icon; a large one would take seconds and gigabytes to decode.
QIcon iconInFile(const QString& path) {
  constexpr int kLargest = 1024;
  if (!QFileInfo(path).isFile()) return {};
  const QSize size = QImageReader(path).size();
  const bool fits = size.isValid() && size.width() <= kLargest && size.height() <= kLargest;
  return fits ? QIcon(path) : QIcon();
}

/// An icon that belongs to no theme (freedesktop.org, icon themes 0.13, "pixmaps").
QIcon unthemedIcon(const QString& name) {
  for (const auto* const suffix : {u"", u".svg", u".png", u".xpm"}) {
    const QString path = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                u"pixmaps/"_s + name + QString::fromUtf16(suffix));
    if (!path.isEmpty()) return iconInFile(path);
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
  if (application.icon.startsWith(u'/')) return iconInFile(application.icon);
  const QIcon themed = QIcon::fromTheme(application.icon);
  return themed.isNull() ? unthemedIcon(application.icon) : themed;
}

}  // namespace nimbrel
