#pragma once

#include <QList>

#include "app/hotkeys/HotKeyCombo.h"
#include "settings/model/IgnoredApp.h"

namespace nimbrel {

/// The user's choices, with their defaults. Expiries are in seconds: 0 keeps nothing, −1 keeps without
/// expiry.
struct AppSettings final {
  int maxUnpinned = 100;
  int sensitiveExpiry = 300;
  int softSensitiveExpiry = 900;
  QList<IgnoredApp> ignoredApps = defaultIgnoredApps();
  bool ocrEnabled = true;
  bool richEnabled = true;
  HotKeyCombo hotKey = defaultHotKey();
  HotKeyCombo nextHotKey = defaultNextHotKey();
};

}  // namespace nimbrel
