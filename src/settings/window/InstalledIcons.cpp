#include "settings/window/InstalledIcons.h"

#include "look/Symbols.h"
#include "settings/window/SettingsPage.h"

namespace nimbrel {

void InstalledIcons::setApplications(const QList<InstalledApplication>& applications) {
  applications_.clear();
  icons_.clear();
  for (const InstalledApplication& application : applications)
    applications_.insert(application.identifier, application);
}

QIcon InstalledIcons::icon(const QString& identifier, const QIcon& generic) {
  const auto known = icons_.constFind(identifier);
  if (known != icons_.constEnd()) return known->isNull() ? generic : *known;
  const auto application = applications_.constFind(identifier);
  const QIcon icon = application == applications_.constEnd() ? QIcon() : catalog_.icon(*application);
  icons_.insert(identifier, icon);
  return icon.isNull() ? generic : icon;
}

QIcon genericApplicationIcon(const QPalette& palette) {
  const QColor soft = blend(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.5);
  return symbols::icon(QStringLiteral("app.dashed"), soft, palette.color(QPalette::HighlightedText));
}

}  // namespace nimbrel
