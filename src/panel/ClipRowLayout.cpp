#include "panel/ClipRowLayout.h"

#include <algorithm>

namespace nimbrel {

ClipRowLayout layoutRow(const QSize& size, bool hasBadge, bool isPinned) {
  constexpr int kPadding = 8;
  constexpr int kGap = 10;
  constexpr int kIcon = 28;
  constexpr QSize kBadge(28, 18);
  constexpr int kMark = 14;
  ClipRowLayout layout;
  layout.background = QRect(0, 0, size.width(), size.height() - 1);
  const int middle = layout.background.height() / 2;
  layout.icon = QRect(kPadding, middle - kIcon / 2, kIcon, kIcon);
  int right = size.width() - kPadding;
  if (hasBadge) {
    layout.badge = QRect(QPoint(right - kBadge.width(), middle - kBadge.height() / 2), kBadge);
    right = layout.badge.left() - 6;
  }
  if (isPinned) {
    layout.pin = QRect(right - kMark, middle - kMark / 2, kMark, kMark);
    right = layout.pin.left() - 6;
  }
  const int left = layout.icon.right() + 1 + kGap;
  const int width = std::max(0, right - left);
  layout.preview = QRect(left, middle - 18, width, 19);
  layout.details = QRect(left, middle + 2, width, 15);
  return layout;
}

}  // namespace nimbrel
