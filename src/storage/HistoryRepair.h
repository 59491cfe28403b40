#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/Clock.h"
#include "storage/HistoryCipher.h"

namespace nimbrel {

/// How a history's database is.
struct DatabaseHealth final {
  enum class State {
    /// There is none yet.
    missing,
    sound,
    /// It can be repaired, as far as it can be read.
    damaged,
    /// A newer version of the program has written it, or it cannot be opened for want of rights or room.
    untouchable,
  };

  State state = State::missing;
  /// What is wrong, in the library's words.
  QString detail;
  qint64 rows = 0;
  /// Rows whose content cannot be opened or makes no sense.
  qint64 unreadable = 0;
};

/// /// Looks at a database, also while the program is using it, and changes nothing; without a cipher, as one
/// who has no key. *Waits* for the disk, and with a cipher for the key store.
[[nodiscard]] DatabaseHealth examineDatabase(const QString& path, HistoryCipher* cipher);

/// What a repair came to.
struct RepairOutcome final {
  /// Why there is no repaired database; then the old one is where it was.
  std::optional<QString> failure;
  /// The name of the damaged one, in the same folder.
  QString setAside;
  qint64 salvaged = 0;
};

/// Sets a damaged database aside, never deleting it, and puts a new one in its place with every row that can
/// be read. Nobody else may be using it. Can be interrupted at any moment: what was there is still there,
/// under one name or the other. *Waits* for the disk.
[[nodiscard]] RepairOutcome repairDatabase(const QString& path, const Clock& clock);

/// The names of the databases that were set aside. While there is one, files that no row refers to may be
/// its.
[[nodiscard]] QStringList damagedDatabases(const QString& storageDirectory);

}  // namespace nimbrel
