#pragma once

#include <QTabWidget>
#include <QWidget>

#include "capture/Background.h"
#include "settings/window/SettingsParts.h"

namespace nimbrel {

/// Every choice that the user has, on three tabs; each change takes effect at once. Main thread.
class SettingsView final : public QWidget {
  Q_OBJECT

 public:
  explicit SettingsView(const SettingsParts& parts, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void applyTheme();

  QTabWidget* tabs_;
  Background background_;
};

}  // namespace nimbrel
