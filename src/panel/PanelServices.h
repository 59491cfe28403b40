#pragma once

#include <functional>

#include "app/permission/PermissionState.h"
#include "capture/ClipboardStore.h"
#include "look/icons/InstalledIcons.h"
#include "panel/ClipActions.h"
#include "panel/ClipRow.h"
#include "platform/Clock.h"
#include "platform/KeyReader.h"
#include "platform/Opener.h"
#include "settings/model/SettingsValues.h"
#include "storage/HistoryCipher.h"

namespace nimbrel {

/// What the panel's content works with; everything outlives it.
struct PanelServices final {
  ClipboardStore& store;
  PermissionState& permission;
  Opener& opener;
  const SettingsValues& settings;
  const Clock& clock;
  const KeyReader& keys;
  /// Whether the history is sealed on the disk, and if not, why.
  std::function<HistoryCipher::KeyState()> keyState;
  /// Empty where nobody can ask the user for a proof.
  Authenticate authenticate;
  /// Of the size `kRowIconSize`.
  InstalledIcons& icons;
};

}  // namespace nimbrel
