#pragma once

#include "platform/StatusItem.h"

namespace nimbrel {

/// What the status item shows while capture is paused or not and the paste queue holds so many clips.
[[nodiscard]] StatusItemState statusItemState(bool paused, qsizetype queueLength);

}  // namespace nimbrel
