#pragma once

#include <QString>
#include <optional>

#include "capture/model/ClipItem.h"
#include "capture/model/ClipKind.h"
#include "capture/model/SourceApp.h"

namespace nimbrel {

/// Which clips of the history are shown, apart from what their text says.
struct ClipFilter final {
  ClipKind kind = ClipKind::all;
  /// Only what was copied in this application.
  std::optional<SourceApp> app;
  /// Only what is in this collection.
  std::optional<QString> collection;

  bool operator==(const ClipFilter&) const = default;
};

/// The application that a clip was copied in; nothing unless both its identifier and its name are known.
[[nodiscard]] std::optional<SourceApp> sourceAppOf(const ClipItem& clip);

/// Whether a clip passes every part of the filter.
[[nodiscard]] bool passesFilter(const ClipItem& clip, const ClipFilter& filter);

}  // namespace nimbrel
