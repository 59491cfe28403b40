#include "look/icons/InstalledIcons.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "look/Symbols.h"
#include "look/Tones.h"

namespace nimbrel {

InstalledIcons::InstalledIcons(const ApplicationCatalog& catalog, const QSize& size, QObject* parent)
    : QObject(parent), catalog_(catalog), size_(size) {
  connect(&timer_, &QTimer::timeout, this, &InstalledIcons::findNext);
  asking_.setSingleShot(true);
  asking_.setInterval(0);
  connect(&asking_, &QTimer::timeout, this, &InstalledIcons::unknownAskedFor);
}

void InstalledIcons::setApplications(const QList<InstalledApplication>& applications) {
  const auto before = std::exchange(applications_, {});
  for (const InstalledApplication& application : applications) {
    if (applications_.contains(application.identifier)) continue;
    applications_.insert(application.identifier, application);
    if (before.value(application.identifier) != application) icons_.remove(application.identifier);
  }
  icons_.removeIf(
      [this](QHash<QString, QIcon>::iterator icon) { return !applications_.contains(icon.key()); });
  const bool foundSome = std::any_of(unknown_.cbegin(), unknown_.cend(),
                                     [this](const QString& id) { return applications_.contains(id); });
  if (foundSome) Q_EMIT iconsFound();
}

QIcon InstalledIcons::icon(const QString& identifier, const QIcon& generic) {
  const auto known = icons_.constFind(identifier);
  if (known != icons_.constEnd()) return known->isNull() ? generic : *known;
  if (!applications_.contains(identifier)) {
    const auto asked = unknown_.size();
    unknown_.insert(identifier);
    if (unknown_.size() > asked) asking_.start();
  } else if (!wanted_.contains(identifier)) {
    wanted_.append(identifier);
    timer_.start(0);
  }
  return generic;
}

void InstalledIcons::findNext() {
  if (!wanted_.isEmpty()) {
    const QString identifier = wanted_.takeFirst();
    const QIcon found = catalog_.icon(applications_.value(identifier));
    // Read now, and not when it is painted.
    const QPixmap pixmap = found.isNull() ? QPixmap() : found.pixmap(size_, qGuiApp->devicePixelRatio());
    icons_.insert(identifier, pixmap.isNull() ? QIcon() : QIcon(pixmap));
  }
  if (!wanted_.isEmpty()) return;
  timer_.stop();
  Q_EMIT iconsFound();
}

QIcon genericApplicationIcon(const QPalette& palette) {
  const QColor soft = blend(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.5);
  return symbols::icon(QStringLiteral("app.dashed"), soft, palette.color(QPalette::HighlightedText));
}

}  // namespace nimbrel
