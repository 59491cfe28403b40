#pragma once

#include <QRect>
#include <QSize>

namespace nimbrel {

/// What a row has to make room for.
struct ClipRowParts final {
  bool picture = false;
  /// ⌘1 … ⌘9.
  bool badge = false;
  /// Pin and queue.
  int marks = 0;
};

/// Where the parts of a row are, in the row's own coordinates.
struct ClipRowLayout final {
  QRect background;
  /// The source's tile or the picture.
  QRect icon;
  QRect preview;
  QRect details;
  /// Empty without a badge.
  QRect badge;
  /// The marks stand side by side, the last at the right end.
  QRect marks;

  bool operator==(const ClipRowLayout&) const = default;
};

/// How large an application's icon, or the tile in its place, is, in device-independent pixels.
inline constexpr QSize kRowIconSize(28, 28);
/// The side of a mark, and of the space before the next.
inline constexpr int kMarkSide = 14;
inline constexpr int kMarkGap = 6;

[[nodiscard]] ClipRowLayout layoutRow(const QSize& size, const ClipRowParts& parts);

}  // namespace nimbrel
