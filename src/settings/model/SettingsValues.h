#pragma once

#include <QList>
#include <QtGlobal>

#include "app/hotkeys/HotKeyCombo.h"
#include "settings/model/IgnoredApp.h"
#include "settings/model/LockMode.h"

namespace nimbrel {

/// The user's choices, with their defaults.
struct SettingsValues final {
  /// How many clips that are not pinned the history keeps; at least 1.
  qint64 maxUnpinned = 100;
  /// In seconds, for credentials and for one-time codes: 0 keeps nothing, −1 keeps without expiry.
  qint64 sensitiveExpiry = 300;
  qint64 softSensitiveExpiry = 900;
  QList<IgnoredApp> ignoredApps = defaultIgnoredApps();
  /// Text is recognised in copied images.
  bool ocrEnabled = true;
  /// The formatted form of a text is kept with it.
  bool richEnabled = true;
  LockMode lockMode = LockMode::disabled;
  /// Shows and hides the panel.
  HotKeyCombo hotKey = defaultHotKey();
  /// Pastes the next clip of the queue.
  HotKeyCombo nextHotKey = defaultNextHotKey();

  bool operator==(const SettingsValues&) const = default;
};

}  // namespace nimbrel
