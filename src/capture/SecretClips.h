#pragma once

#include "capture/model/ClipItem.h"
#include "capture/model/SensitivityLevel.h"
#include "settings/model/AppSettings.h"

namespace nimbrel {

/// Marks a clip that was graded as a secret: it is masked, never indexed, has no formatting, and expires when
/// the settings say so, counted from `now`; a pinned one never does. False when the user wants no such clip,
/// unless it is pinned: that too is the user's word.
[[nodiscard]] bool markSecret(ClipItem& clip, SensitivityLevel level, const AppSettings& settings,
                              Timestamp now);

}  // namespace nimbrel
