#pragma once

#include <QStyledItemDelegate>

#include "capture/Thumbnails.h"
#include "capture/model/ClipItem.h"
#include "platform/Clock.h"

namespace nimbrel {

/// Draws one clip of the list: a tile for its source, a line of preview, small labels, its badge and marks.
/// Reads memory only; a picture that is not there yet is asked for and drawn when it has come.
class ClipRow final : public QStyledItemDelegate {
 public:
  /// Clock and thumbnails must outlive this.
  ClipRow(const Clock& clock, Thumbnails& thumbnails, QObject* parent)
      : QStyledItemDelegate(parent), clock_(clock), thumbnails_(thumbnails) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void drawIcon(QPainter& painter, const QRect& square, const ClipItem& clip) const;

  const Clock& clock_;
  Thumbnails& thumbnails_;
};

}  // namespace nimbrel
