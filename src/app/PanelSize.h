#pragma once

#include <QSize>

#include "platform/UserDefaults.h"

namespace nimbrel {

/// The size that the user has given the panel, in device-independent pixels, within its limits; `standard`
/// when there is none, or none that can be understood.
[[nodiscard]] QSize storedPanelSize(const UserDefaults& defaults, const QSize& standard);

/// Keeps a size for the next start; never waits.
void storePanelSize(UserDefaults& defaults, const QSize& size);

}  // namespace nimbrel
