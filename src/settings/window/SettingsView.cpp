#include "settings/window/SettingsView.h"

#include <QEvent>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <array>

#include "look/Symbols.h"
#include "settings/window/GeneralSettingsTab.h"
#include "settings/window/IgnoredAppsSettingsTab.h"
#include "settings/window/SecuritySettingsTab.h"

namespace nimbrel {
namespace {

constexpr QSize kSize(490, 390);

}  // namespace

SettingsView::SettingsView(const SettingsParts& parts, QWidget* parent)
    : QWidget(parent), tabs_(new QTabWidget(this)), background_(QStringLiteral("Nimbrel.settings")) {
  setFixedSize(kSize);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 4, 0, 0);
  tabs_->setDocumentMode(true);
  column->addWidget(tabs_);
  tabs_->addTab(new GeneralSettingsTab(parts, background_), tr("General"));
  tabs_->addTab(new SecuritySettingsTab(parts), tr("Seguridad"));
  tabs_->addTab(new IgnoredAppsSettingsTab(parts, background_), tr("Apps ignoradas"));
  tabs_->tabBar()->setAccessibleName(tr("Apartados de los ajustes"));
  applyTheme();
}

void SettingsView::applyTheme() {
  const std::array names{QStringLiteral("gearshape"), QStringLiteral("lock.shield"),
                         QStringLiteral("nosign")};
  for (int i = 0; i < tabs_->count(); ++i)
    tabs_->setTabIcon(
        i, symbols::icon(names[static_cast<std::size_t>(i)], palette().color(QPalette::WindowText)));
}

void SettingsView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Where somebody with a keyboard begins.
  if (!event->spontaneous()) tabs_->tabBar()->setFocus(Qt::OtherFocusReason);
}

void SettingsView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) applyTheme();
}

void SettingsView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Close) || event->matches(QKeySequence::Cancel)) {
    window()->close();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace nimbrel
