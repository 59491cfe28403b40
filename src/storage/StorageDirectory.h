#pragma once

#include <QString>

namespace nimbrel {

/// The folder of the history: "Nimbrel" in the user's folder for application data. Making it also makes
/// "Images" and "Rich" inside; all three are for their owner alone (0700). Errors are left to the first write
/// to report.
[[nodiscard]] QString makeStorageDirectory(const QString& dataFolder);

/// The user's folder for application data, from the desktop's conventions.
[[nodiscard]] QString userDataFolder();

/// The database's file in a storage directory.
[[nodiscard]] QString databasePath(const QString& storageDirectory);

/// The file that whoever works on the history keeps locked, in whatever session.
[[nodiscard]] QString lockPath(const QString& storageDirectory);

}  // namespace nimbrel
