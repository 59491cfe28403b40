#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

#include "capture/model/ClipItem.h"
#include "platform/Clock.h"
#include "platform/UserDefaults.h"
#include "settings/model/SettingsValues.h"
#include "storage/BlobFiles.h"
#include "storage/ClipDatabase.h"
#include "storage/HistoryCipher.h"

namespace nimbrel {

/// What the import works with; everything outlives it.
struct LegacyImportParts final {
  ClipDatabase& database;
  HistoryCipher& cipher;
  UserDefaults& defaults;
  const Clock& clock;
  const SettingsValues& settings;
  BlobFiles& files;
};

/// Brings the history of older versions into the database, once: the file "history.json" in the storage
/// directory, or else the bytes under "clipboardItems" in the user defaults. Clips that were never graded are
/// graded now, and a credential among them is treated as one that has just been copied. An imported source is
/// retired; an unreadable file is set aside and never deleted; what could not be imported is tried again at
/// the next launch. Any thread, one at a time.
class LegacyImport final {
 public:
  LegacyImport(const LegacyImportParts& parts, const QString& storageDirectory);

  /// *Waits* for the disk. Failures are logged.
  void run();

 private:
  void importFile(const QByteArray& data);
  void importDefaults();
  /// Whether the clips are in the database for good.
  [[nodiscard]] bool store(const QList<ClipItem>& clips);
  /// Removes the files that clips had in the source and that no row refers to: a credential's formatting.
  void removeUnusedFilesOf(const QList<ClipItem>& clips);
  void setAside();
  void retireFile(const QByteArray& data);
  [[nodiscard]] QString inFolder(const QString& name) const;

  LegacyImportParts parts_;
  const QString folder_;
};

/// Whether there is an older history that has not been imported, or could not be read: its images and formats
/// belong to nobody yet and must not be taken for orphans.
[[nodiscard]] bool holdsUnimportedHistory(const QString& storageDirectory, const UserDefaults& defaults);

/// Reads a JSON array of clips. Nothing when it is no such array or any clip in it is malformed.
[[nodiscard]] std::optional<QList<ClipItem>> clipsFromJson(const QByteArray& json);

}  // namespace nimbrel
