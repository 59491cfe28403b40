#pragma once

#include "platform/KeystrokePoster.h"
#include "platform/linux/ActiveApplication.h"
#include "platform/linux/PasteChords.h"
#include "platform/linux/X11Keyboard.h"
#include "platform/linux/X11Pasteboard.h"

namespace nimbrel {

/// Presses keys through the XTEST extension.
class X11KeystrokePoster final : public KeystrokePoster {
 public:
  /// All must outlive this.
  X11KeystrokePoster(X11Session& session, DesktopEntries& entries, X11Pasteboard& pasteboard);

  void postPaste() override;

 private:
  /// The application whose window has the keyboard; what is known of the window is found on it or its
  /// ancestors.
  [[nodiscard]] std::optional<RunningApplication> focusedApplication();
  void press(const QList<xcb_keycode_t>& chord);

  X11Session& session_;
  X11Keyboard keyboard_;
  ActiveApplication active_;
  X11Pasteboard& pasteboard_;
};

/// Whether the X server lets programs press keys.
[[nodiscard]] bool isXtestUsable(X11Session& session);

}  // namespace nimbrel
