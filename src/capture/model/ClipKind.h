#pragma once

#include <array>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The kind filter of the history list.
enum class ClipKind { all, text, image, files, pinned };

inline constexpr std::array<ClipKind, 5> kAllClipKinds{ClipKind::all, ClipKind::text, ClipKind::image,
                                                       ClipKind::files, ClipKind::pinned};

/// Whether a clip passes the filter.
[[nodiscard]] bool passesKind(const ClipItem& clip, ClipKind kind);

}  // namespace nimbrel
