#pragma once

#include "capture/model/ClipItem.h"
#include "capture/model/SensitivityLevel.h"
#include "settings/model/SettingsValues.h"

namespace nimbrel {

/// Makes a clip one that is masked, never indexed and without formatting.
void becomeSensitive(ClipItem& clip);

/// Marks a clip that was graded as a secret: it becomes sensitive, and expires when the settings say so,
/// counted from `now`, or when it was to expire anyway; a pinned one never does. False when the user wants no
/// such clip, unless it is pinned: that too is the user's word.
[[nodiscard]] bool markSecret(ClipItem& clip, SensitivityLevel level, const SettingsValues& settings,
                              Timestamp now);

}  // namespace nimbrel
