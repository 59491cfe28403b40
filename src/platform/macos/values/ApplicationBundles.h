#pragma once

#include <QStringList>

namespace nimbrel::macos {

/// The application bundles in these folders and in the folders right in them, by their paths; what is inside
/// a bundle is the bundle's own. *Waits* for the disk; any thread.
[[nodiscard]] QStringList applicationBundles(const QStringList& folders);

/// Where applications are installed, for everybody and for the user alone.
[[nodiscard]] QStringList applicationFolders();

}  // namespace nimbrel::macos
