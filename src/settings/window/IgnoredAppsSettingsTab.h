#pragma once

#include <QListWidget>
#include <QPushButton>
#include <QWidget>
#include <functional>
#include <optional>

#include "capture/Background.h"
#include "look/icons/InstalledIcons.h"
#include "settings/window/SettingsParts.h"

namespace nimbrel {

/// The applications whose copies are never recorded. Main thread.
class IgnoredAppsSettingsTab final : public QWidget {
  Q_OBJECT

 public:
  IgnoredAppsSettingsTab(const SettingsParts& parts, Background& background, QWidget* parent = nullptr);

  /// The identifier of the selected row.
  [[nodiscard]] std::optional<QString> selectedAppID() const;

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildLayout();
  void applyTheme();
  void showApps();
  void showIcons();
  void addApplication();
  void openChooser();
  /// Asks for the installed applications, whose icons are known afterwards.
  void findApplications(std::function<void(const QList<InstalledApplication>&)> found);
  void add(const InstalledApplication& application);
  void removeSelected();
  void select(const QString& bundleID);
  void updateButtons();

  SettingsParts parts_;
  Background& background_;
  InstalledIcons icons_;
  QListWidget* list_;
  QPushButton* add_;
  QPushButton* remove_;
};

}  // namespace nimbrel
