#pragma once

#include <QString>
#include <optional>

#include "capture/HistoryList.h"
#include "capture/model/ClipItem.h"

namespace nimbrel {

/// Whether a clip's text may be handed to other programs: it is a text and no secret.
[[nodiscard]] inline bool isSecureText(const ClipItem& clip) {
  return clip.isText() && !clip.isSensitive();
}

/// The most recent clip that may be handed out, of one collection if a name is given; null when there is
/// none.
[[nodiscard]] ClipRef latestSecureText(const HistoryList& history,
                                       const std::optional<QString>& collection = std::nullopt);

}  // namespace nimbrel
