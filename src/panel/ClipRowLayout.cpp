#include "panel/ClipRowLayout.h"

#include <algorithm>

namespace nimbrel {

ClipRowLayout layoutRow(const QSize& size, const ClipRowParts& parts) {
  constexpr int kPadding = 8;
  constexpr int kGap = 10;
  constexpr QSize kPicture(64, 48);
  constexpr QSize kBadge(28, 18);
  ClipRowLayout layout;
  layout.background = QRect(0, 0, size.width(), size.height() - 1);
  const int middle = layout.background.height() / 2;
  const QSize icon = parts.picture ? kPicture : kRowIconSize;
  layout.icon = QRect(QPoint(kPadding, middle - icon.height() / 2), icon);
  int right = size.width() - kPadding;
  if (parts.badge) {
    layout.badge = QRect(QPoint(right - kBadge.width(), middle - kBadge.height() / 2), kBadge);
    right = layout.badge.left() - kMarkGap;
  }
  if (parts.marks > 0) {
    const int width = parts.marks * kMarkSide + (parts.marks - 1) * kMarkGap;
    layout.marks = QRect(right - width, middle - kMarkSide / 2, width, kMarkSide);
    right = layout.marks.left() - kMarkGap;
  }
  const int left = layout.icon.right() + 1 + kGap;
  const int width = std::max(0, right - left);
  layout.preview = QRect(left, middle - 18, width, 19);
  layout.details = QRect(left, middle + 2, width, 15);
  return layout;
}

}  // namespace nimbrel
