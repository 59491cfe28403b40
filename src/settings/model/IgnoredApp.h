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

}  // namespace nimbrel
