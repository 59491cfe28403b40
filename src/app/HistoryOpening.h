#pragma once

#include <memory>

#include "platform/Clock.h"
#include "platform/UserDefaults.h"
#include "storage/ClipDatabase.h"
#include "storage/HistoryCipher.h"

namespace nimbrel {

/// Makes the history of a storage directory ready to be loaded: looks the key up, opens the database, and
/// brings into it what older versions have left, as the settings say. May wait for the user, and for seconds
/// over a large history; any thread, as long as no other one uses the defaults meanwhile.
[[nodiscard]] std::unique_ptr<ClipDatabase> openHistory(const QString& storageDirectory,
                                                        HistoryCipher& cipher, UserDefaults& defaults,
                                                        const Clock& clock);

}  // namespace nimbrel
