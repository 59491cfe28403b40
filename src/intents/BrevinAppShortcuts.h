#pragma once

#include <QList>
#include <QString>

#include "platform/InstanceRequests.h"

namespace nimbrel {

/// A ready-made way to an intent, as the desktop offers it.
struct AppShortcut final {
  Intent intent = Intent::copyLatestClip;
  /// What the user says or types.
  QString phrase;
  QString shortTitle;
  /// The name of a symbol.
  QString symbol;

  bool operator==(const AppShortcut&) const = default;
};

/// The shortcuts that the program declares.
struct BrevinAppShortcuts final {
  /// In the order in which they are offered; each phrase ends in the application's name.
  [[nodiscard]] static QList<AppShortcut> appShortcuts(const QString& applicationName);
};

}  // namespace nimbrel
