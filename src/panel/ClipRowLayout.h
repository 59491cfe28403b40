#pragma once

#include <QRect>
#include <QSize>

namespace nimbrel {

/// Where the parts of a row are, in the row's own coordinates.
struct ClipRowLayout final {
  static constexpr int height = 47;

  QRect background;
  QRect icon;
  QRect preview;
  QRect details;
  /// The place of the badge; empty beyond the ninth row.
  QRect badge;
  QRect pin;

  bool operator==(const ClipRowLayout&) const = default;
};

[[nodiscard]] ClipRowLayout layoutRow(const QSize& size, bool hasBadge, bool isPinned);

}  // namespace nimbrel
