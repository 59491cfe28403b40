#pragma once

#include <QList>

#include "app/PanelPlacement.h"

namespace nimbrel {

/// The screens as they are now, the main one first. Main thread.
[[nodiscard]] QList<ScreenFrame> screenFrames();

}  // namespace nimbrel
