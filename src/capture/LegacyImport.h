#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

#include "capture/model/ClipItem.h"
#include "platform/Clock.h"
#include "platform/UserDefaults.h"
#include "storage/ClipDatabase.h"
#include "storage/HistoryCipher.h"

namespace nimbrel {

/// What the import works with; everything outlives it.
struct LegacyImportParts final {
  ClipDatabase& database;
  HistoryCipher& cipher;
  UserDefaults& defaults;
  const Clock& clock;
};

/// Brings the history of older versions into the database, once: the file "history.json" in the storage
/// directory, or else the bytes under "clipboardItems" in the user defaults. An imported source is retired;
/// an unreadable file is set aside and never deleted; what could not be imported is tried again at the next
/// launch. Any thread, one at a time.
class LegacyImport final {
 public:
  LegacyImport(const LegacyImportParts& parts, const QString& storageDirectory);

  /// *Waits* for the disk. Failures are logged.
  void run();

 private:
  void importFile(const QByteArray& data);
  void importDefaults();
  void setAside();
  void retireFile(const QByteArray& data);
  [[nodiscard]] QString inFolder(const QString& name) const;

  LegacyImportParts parts_;
  const QString folder_;
};

/// Reads a JSON array of clips. Nothing when it is no such array or any clip in it is malformed.
[[nodiscard]] std::optional<QList<ClipItem>> clipsFromJson(const QByteArray& json);

}  // namespace nimbrel
