#include "app/HistoryOpening.h"

#include "capture/LegacyImport.h"
#include "settings/model/AppSettings.h"
#include "storage/StorageDirectory.h"

namespace nimbrel {

std::unique_ptr<ClipDatabase> openHistory(const QString& storageDirectory, HistoryCipher& cipher,
                                          UserDefaults& defaults, const Clock& clock) {
  static_cast<void>(cipher.hasKey());
  const SettingsValues settings = loadSettings(defaults);
  auto database = std::make_unique<ClipDatabase>(databasePath(storageDirectory), cipher);
  BlobFiles files(storageDirectory, cipher, clock);
  LegacyImport({.database = *database,
                .cipher = cipher,
                .defaults = defaults,
                .clock = clock,
                .settings = settings,
                .files = files},
               storageDirectory)
      .run();
  return database;
}

}  // namespace nimbrel
