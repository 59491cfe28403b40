#include "app/ClipPaster.h"

namespace nimbrel {

ClipPaster::ClipPaster(const ClipPasterParts& parts) : parts_(parts) {
  settled_.setSingleShot(true);
  settled_.setInterval(Lock::kSettling);
  connect(&settled_, &QTimer::timeout, this, &ClipPaster::postAfterPrompt);
  connect(&parts_.lock, &Lock::promptOpens, this,
          [this] { beforePrompt_ = parts_.workspace.frontmostApplication(); });
}

std::optional<BrevinIntentError> ClipPaster::pasteClipNow(const ClipItem& clip) {
  parts_.permission.recheck();
  if (!parts_.permission.accessibilityGranted()) {
    parts_.permission.requestAccessibility();
    return BrevinIntentError::accessibilityRequired;
  }
  if (!parts_.store.copyToPasteboard(clip, false)) return BrevinIntentError::emptyHistory;
  postPaste();
  return std::nullopt;
}

void ClipPaster::postPaste() {
  // The panel would take the keys itself.
  if (parts_.panel.isVisible()) return parts_.panel.hideAndPaste();
  // The keyboard is still on its way back from the prompt.
  if (parts_.lock.isAuthenticating()) return settled_.start();
  parts_.keystrokes.postPaste();
}

void ClipPaster::postAfterPrompt() {
  const auto front = parts_.workspace.frontmostApplication();
  if (front && front == beforePrompt_) return parts_.keystrokes.postPaste();
  parts_.panel.tellNothingPasted();
}

}  // namespace nimbrel
