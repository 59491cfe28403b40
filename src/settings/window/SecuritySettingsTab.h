#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QWidget>

#include "settings/window/Picker.h"
#include "settings/window/SettingsPage.h"
#include "settings/window/SettingsParts.h"

namespace nimbrel {

/// What happens to secrets, and whether the history is sealed. Main thread.
class SecuritySettingsTab final : public QWidget {
  Q_OBJECT

 public:
  explicit SecuritySettingsTab(const SettingsParts& parts, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void switchLock(bool on);
  [[nodiscard]] Picker* addExpiry(SettingsPage& page, const QString& label, const QString& caption);
  [[nodiscard]] QWidget* makeStatus();
  void showSettings();
  void showEncryption();

  SettingsParts parts_;
  QCheckBox* lock_ = nullptr;
  /// While the user is asked whether the lock may be switched off.
  bool confirming_ = false;
  Picker* hard_ = nullptr;
  Picker* soft_ = nullptr;
  QWidget* status_ = nullptr;
  QLabel* statusSymbol_ = nullptr;
  QLabel* statusTitle_ = nullptr;
  QLabel* statusText_ = nullptr;
};

}  // namespace nimbrel
