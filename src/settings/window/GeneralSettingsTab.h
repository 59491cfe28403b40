#pragma once

#include <QCheckBox>
#include <QWidget>

#include "capture/Background.h"
#include "settings/window/Picker.h"
#include "settings/window/SettingsPage.h"
#include "settings/window/SettingsParts.h"

namespace nimbrel {

/// Hot keys, the history's capacity, the start with the session, and what capture does besides. Main thread.
class GeneralSettingsTab final : public QWidget {
  Q_OBJECT

 public:
  GeneralSettingsTab(const SettingsParts& parts, Background& background, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void addHotKeys(SettingsPage& page);
  void addHistory(SettingsPage& page);
  void readLoginItem();
  void setLoginItem(bool enabled);
  void showSettings();

  SettingsParts parts_;
  Background& background_;
  Picker* capacity_ = nullptr;
  QCheckBox* launchAtLogin_ = nullptr;
  QCheckBox* ocr_ = nullptr;
  QCheckBox* rich_ = nullptr;
};

}  // namespace nimbrel
