#pragma once

#include <QList>
#include <QString>

namespace nimbrel {

/// An application whose copies are never recorded. `bundleID` alone identifies it, exactly and
/// case-sensitively.
struct IgnoredApp final {
  QString bundleID;
  QString name;

  bool operator==(const IgnoredApp&) const = default;
};

/// The password managers that are ignored until the user says otherwise.
[[nodiscard]] QList<IgnoredApp> defaultIgnoredApps();

/// Whether an application is in a list.
[[nodiscard]] bool containsApp(const QList<IgnoredApp>& apps, const QString& bundleID);

/// An application's name as the user reads it: those that the program brings are in the user's language.
[[nodiscard]] QString shownName(const IgnoredApp& app);

}  // namespace nimbrel
