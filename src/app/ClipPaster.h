#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>

#include "app/PanelController.h"
#include "app/permission/PermissionState.h"
#include "capture/ClipboardStore.h"
#include "intents/BrevinIntentError.h"
#include "panel/lock/Lock.h"
#include "platform/KeystrokePoster.h"
#include "platform/Workspace.h"

namespace nimbrel {

/// What pasting without the panel works with; everything outlives it.
struct ClipPasterParts final {
  ClipboardStore& store;
  PermissionState& permission;
  const Workspace& workspace;
  KeystrokePoster& keystrokes;
  Lock& lock;
  PanelController& panel;
};

/// Pastes a clip where the user is, for whoever automates the program. Main thread.
class ClipPaster final : public QObject {
 public:
  explicit ClipPaster(const ClipPasterParts& parts);

  /// Puts a clip with its formatting on the pasteboard and presses the keys. The clip is not even copied when
  /// the program may not press keys; then the user has been asked to let it.
  [[nodiscard]] std::optional<BrevinIntentError> pasteClipNow(const ClipItem& clip);

 private:
  void postPaste();
  void postAfterPrompt();

  ClipPasterParts parts_;
  /// Where the user was when the last prompt for a proof came up.
  std::optional<RunningApplication> beforePrompt_;
  QTimer settled_;
};

}  // namespace nimbrel
