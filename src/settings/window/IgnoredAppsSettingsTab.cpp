#include "settings/window/IgnoredAppsSettingsTab.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QVBoxLayout>
#include <algorithm>

#include "look/PlainText.h"
#include "look/Symbols.h"
#include "settings/window/ApplicationChooser.h"
#include "settings/window/ApplicationListModel.h"
#include "settings/window/SettingsPage.h"

namespace nimbrel {
namespace {

constexpr int kMargin = 16;

}  // namespace

IgnoredAppsSettingsTab::IgnoredAppsSettingsTab(const SettingsParts& parts, Background& background,
                                               QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      background_(background),
      icons_(parts.applications, kApplicationIconSize),
      list_(new QListWidget(this)),
      add_(new QPushButton(tr("Añadir aplicación…"), this)),
      remove_(new QPushButton(tr("Quitar aplicación seleccionada"), this)) {
  buildLayout();
  applyTheme();
  showApps();
  connect(&icons_, &InstalledIcons::iconsFound, this, &IgnoredAppsSettingsTab::showIcons);
  connect(&parts_.settings, &AppSettings::ignoredAppsChanged, this, &IgnoredAppsSettingsTab::showApps);
  connect(list_, &QListWidget::itemSelectionChanged, this, &IgnoredAppsSettingsTab::updateButtons);
  connect(add_, &QPushButton::clicked, this, &IgnoredAppsSettingsTab::addApplication);
  connect(remove_, &QPushButton::clicked, this, &IgnoredAppsSettingsTab::removeSelected);
}

void IgnoredAppsSettingsTab::buildLayout() {
  list_->setObjectName(QStringLiteral("ignoredApps"));
  list_->setAccessibleName(tr("Aplicaciones ignoradas"));
  list_->setIconSize(kApplicationIconSize);
  list_->setUniformItemSizes(true);
  list_->setSpacing(1);
  list_->installEventFilter(this);
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(add_);
  buttons->addWidget(remove_);
  buttons->addStretch();
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, 12, kMargin, 12);
  column->setSpacing(8);
  auto* const explanation = new QLabel(
      tr("Las aplicaciones añadidas a esta lista no registrarán nada de lo que copies dentro de ellas."),
      this);
  explanation->setWordWrap(true);
  column->addWidget(explanation);
  column->addWidget(list_, 1);
  column->addLayout(buttons);
}

void IgnoredAppsSettingsTab::applyTheme() {
  const QColor text = palette().color(QPalette::ButtonText);
  add_->setIcon(symbols::icon(QStringLiteral("plus"), text));
  remove_->setIcon(symbols::icon(QStringLiteral("minus"), text));
}

void IgnoredAppsSettingsTab::showApps() {
  const auto selected = selectedAppID();
  list_->clear();
  for (const IgnoredApp& app : parts_.settings.values().ignoredApps) {
    auto* const item = new QListWidgetItem(shownName(app).simplified(), list_);
    item->setData(Qt::UserRole, app.bundleID);
    item->setToolTip(plainToolTip(app.bundleID));
  }
  showIcons();
  if (selected) select(*selected);
  updateButtons();
}

void IgnoredAppsSettingsTab::showIcons() {
  const QIcon generic = genericApplicationIcon(palette());
  for (int row = 0; row < list_->count(); ++row) {
    QListWidgetItem* const item = list_->item(row);
    item->setIcon(icons_.icon(item->data(Qt::UserRole).toString(), generic));
  }
}

std::optional<QString> IgnoredAppsSettingsTab::selectedAppID() const {
  const auto selected = list_->selectedItems();
  return selected.isEmpty() ? std::nullopt : std::optional(selected.first()->data(Qt::UserRole).toString());
}

void IgnoredAppsSettingsTab::select(const QString& bundleID) {
  for (int row = 0; row < list_->count(); ++row) {
    if (list_->item(row)->data(Qt::UserRole).toString() == bundleID) return list_->setCurrentRow(row);
  }
}

void IgnoredAppsSettingsTab::updateButtons() {
  remove_->setEnabled(selectedAppID().has_value());
}

void IgnoredAppsSettingsTab::addApplication() {
  if (!parts_.chooseApplication) return openChooser();
  parts_.chooseApplication(this, [tab = QPointer(this)](const InstalledApplication& application) {
    if (tab) tab->add(application);
  });
}

void IgnoredAppsSettingsTab::openChooser() {
  QStringList known;
  for (const IgnoredApp& app : parts_.settings.values().ignoredApps)
    known.append(app.bundleID);
  auto* const chooser =
      new ApplicationChooser(parts_.workspace.frontmostOtherApplication(), known, icons_, this);
  chooser->setAttribute(Qt::WA_DeleteOnClose);
  connect(chooser, &ApplicationChooser::chosen, this, &IgnoredAppsSettingsTab::add);
  chooser->open();
  findApplications([chooser = QPointer(chooser)](const QList<InstalledApplication>& applications) {
    if (chooser) chooser->setApplications(applications);
  });
}

void IgnoredAppsSettingsTab::add(const InstalledApplication& application) {
  QList<IgnoredApp> apps = parts_.settings.values().ignoredApps;
  if (!containsApp(apps, application.identifier)) {
    apps.append({.bundleID = application.identifier, .name = application.name});
    parts_.settings.setIgnoredApps(apps);
  }
  select(application.identifier);
  list_->setFocus();
}

void IgnoredAppsSettingsTab::removeSelected() {
  const auto selected = list_->selectedItems();
  if (selected.isEmpty()) return;
  const int row = list_->row(selected.first());
  QList<IgnoredApp> apps = parts_.settings.values().ignoredApps;
  if (row >= apps.size()) return;
  apps.removeAt(row);
  parts_.settings.setIgnoredApps(apps);
  // The next one, so that several can be removed one after the other.
  list_->setCurrentRow(std::min(row, list_->count() - 1));
}

void IgnoredAppsSettingsTab::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  findApplications([this](const auto&) { showIcons(); });
}

void IgnoredAppsSettingsTab::findApplications(std::function<void(const QList<InstalledApplication>&)> found) {
  background_.run([&catalog = parts_.applications] { return catalog.applications(); },
                  [this, found = std::move(found)](const QList<InstalledApplication>& applications) {
                    icons_.setApplications(applications);
                    found(applications);
                  });
}

void IgnoredAppsSettingsTab::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  applyTheme();
  showIcons();
}

bool IgnoredAppsSettingsTab::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
      removeSelected();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace nimbrel
