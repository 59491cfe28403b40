#pragma once

#include <memory>

#include "settings/window/SettingsView.h"

namespace nimbrel {

/// The window of the settings: made when it is first opened, and kept. Main thread.
class SettingsWindow final {
 public:
  explicit SettingsWindow(const SettingsParts& parts) : parts_(parts) {}

  /// Shows the window in the middle of the screen with the pointer, in front of everything and with the
  /// keyboard.
  void open();

  /// The window, null before it was opened.
  [[nodiscard]] SettingsView* view() const { return view_.get(); }

 private:
  SettingsParts parts_;
  std::unique_ptr<SettingsView> view_;
};

}  // namespace nimbrel
