#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/Clock.h"

namespace nimbrel {

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
