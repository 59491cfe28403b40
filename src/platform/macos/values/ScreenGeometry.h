#pragma once

#include <QRectF>

/// The screen's two ways of counting: AppKit's from the bottom left corner of the first screen upwards, the
/// toolkit's from its top left corner downwards.
namespace nimbrel::macos {

/// A rectangle of the one in the other, either way; `screenHeight` is the first screen's, in points.
[[nodiscard]] constexpr QRectF flipped(const QRectF& area, double screenHeight) {
  return {area.x(), screenHeight - area.y() - area.height(), area.width(), area.height()};
}

}  // namespace nimbrel::macos
