#pragma once

#include <QStyledItemDelegate>

#include "platform/Clock.h"

namespace nimbrel {

/// Draws one clip of the list: a tile for its source, a line of preview, small labels, its badge and marks.
/// Reads memory only.
class ClipRow final : public QStyledItemDelegate {
 public:
  /// The clock must outlive this.
  ClipRow(const Clock& clock, QObject* parent) : QStyledItemDelegate(parent), clock_(clock) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const Clock& clock_;
};

}  // namespace nimbrel
