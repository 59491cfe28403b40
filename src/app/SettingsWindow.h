#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "settings/window/SettingsView.h"

namespace nimbrel {

/// The window of the settings: made when it is first opened, and kept. Main thread.
class SettingsWindow final {
 public:
  /// `bringForward` shows a window in front of everything and gives it the keyboard.
  SettingsWindow(const SettingsParts& parts, std::function<void(QWidget&)> bringForward)
      : parts_(parts), bringForward_(std::move(bringForward)) {}

  /// Shows the window in the middle of the screen with the pointer, in front of everything and with the
  /// keyboard.
  void open();

  /// The window, null before it was opened.
  [[nodiscard]] SettingsView* view() const { return view_.get(); }

 private:
  SettingsParts parts_;
  std::function<void(QWidget&)> bringForward_;
  std::unique_ptr<SettingsView> view_;
};

}  // namespace nimbrel
