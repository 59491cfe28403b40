#include "app/permission/PermissionState.h"

namespace nimbrel {

PermissionState::PermissionState(AccessibilityTrust& trust)
    : trust_(trust), accessibilityGranted_(trust.isTrusted()) {}

void PermissionState::recheck() {
  const bool granted = trust_.isTrusted();
  if (granted == accessibilityGranted_) return;
  accessibilityGranted_ = granted;
  Q_EMIT changed();
}

void PermissionState::requestAccessibility() {
  trust_.request();
}

}  // namespace nimbrel
