#pragma once

#include <QString>

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

}  // namespace nimbrel
