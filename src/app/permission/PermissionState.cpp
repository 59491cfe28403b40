#include "app/permission/PermissionState.h"

namespace nimbrel {

PermissionState::PermissionState(AccessibilityTrust& trust, const Pasteboard& pasteboard, Opener& opener)
    : trust_(trust), pasteboard_(pasteboard), opener_(opener) {
  recheck();
}

void PermissionState::recheck() {
  const bool granted = trust_.isTrusted();
  const bool blocked = pasteboard_.access() == Pasteboard::Access::alwaysDeny;
  if (granted == accessibilityGranted_ && blocked == pasteboardBlocked_) return;
  accessibilityGranted_ = granted;
  pasteboardBlocked_ = blocked;
  Q_EMIT changed();
}

bool PermissionState::requestAccessibility() {
  return trust_.request();
}

bool PermissionState::openPrivacySettings() {
  return opener_.openPrivacySettings();
}

}  // namespace nimbrel
