#pragma once

#include <QString>

namespace nimbrel {

/// An application that clips in the history were copied in, as the panel's filter offers it.
struct SourceApp final {
  QString bundleID;
  QString name;

  bool operator==(const SourceApp&) const = default;
};

}  // namespace nimbrel
