#pragma once

#include "capture/model/ClipItem.h"
#include "settings/model/SettingsValues.h"

namespace nimbrel {

/// Grades a clip that comes from another history and has no grade yet: a credential in it, or in the text
/// recognised in its picture, is treated as one that has just been copied. False when the user wants no such
/// clip. Any thread.
[[nodiscard]] bool gradeImported(ClipItem& clip, const SettingsValues& settings, Timestamp now);

}  // namespace nimbrel
