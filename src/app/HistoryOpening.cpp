#include "app/HistoryOpening.h"

#include "capture/LegacyImport.h"
#include "storage/StorageDirectory.h"

namespace nimbrel {

std::unique_ptr<ClipDatabase> openHistory(const QString& storageDirectory, HistoryCipher& cipher,
                                          UserDefaults& defaults, const Clock& clock) {
  static_cast<void>(cipher.hasKey());
  auto database = std::make_unique<ClipDatabase>(databasePath(storageDirectory), cipher);
  LegacyImport({.database = *database, .cipher = cipher, .defaults = defaults, .clock = clock},
               storageDirectory)
      .run();
  return database;
}

}  // namespace nimbrel
