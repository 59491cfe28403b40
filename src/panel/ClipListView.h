#pragma once

#include <QListView>

#include "panel/ClipListModel.h"
#include "panel/RowGeometry.h"

namespace nimbrel {

/// The list of clips: low rows for texts and tall ones for images, laid out by arithmetic, so that it opens
/// at once however long it is. What changes above the row under the pointer never moves that row. It says
/// what is missing when it is empty.
class ClipListView final : public QListView {
  Q_OBJECT

 public:
  explicit ClipListView(QWidget* parent);

  void setClips(ClipListModel* model);
  void setEmptyText(const QString& text);
  [[nodiscard]] const QString& emptyText() const { return emptyText_; }

  /// The row under the pointer; invalid when there is none.
  [[nodiscard]] QModelIndex hovered() const { return hovered_; }

  [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
  [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  void doItemsLayout() override;
  void reset() override;

  /// How many rows fit, for a step by the page.
  [[nodiscard]] int rowsPerPage() const;

 Q_SIGNALS:
  /// Rows are somewhere else, or another one is under the pointer.
  void rowsShifted();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateGeometries() override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  /// The keys belong to the panel.
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  [[nodiscard]] int verticalOffset() const override;
  [[nodiscard]] int horizontalOffset() const override { return 0; }
  [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) override;
  [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
  void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                   const QList<int>& roles) override;

 private:
  struct Rows {
    int first = -1;
    int last = -1;
  };

  void followRows(const ClipListModel& model);
  /// Notes, before rows come, go or change their height, which row stays where it is on the screen: the one
  /// under the pointer or, in a list that is scrolled, the first to be seen; none of those that leave.
  void dropAnchor(const Rows& leaving);
  [[nodiscard]] int firstShown() const;
  /// Rows are somewhere else now: puts the one that is to stay back where it was.
  void shift();
  void paintEmpty(QPainter& painter) const;
  /// Lets the user drag a clip into another program; *waits* until that has ended.
  void drag(const QModelIndex& index);
  [[nodiscard]] QPixmap pictureOf(const QModelIndex& index) const;
  void hoverAt(const QPoint& point);

  ClipListModel* clips_ = nullptr;
  RowGeometry geometry_;
  QString emptyText_;
  QPersistentModelIndex hovered_;
  /// Where the left button of the mouse was pressed last, from which a drag begins.
  QPersistentModelIndex pressed_;
  QPoint pressedAt_;
  QPersistentModelIndex dragged_;
  bool isDragging_ = false;
  QPersistentModelIndex anchor_;
  /// Where the row that stays begins, from the upper edge of what is shown.
  int anchorTop_ = 0;
  /// How far the list's upper edge has moved down since it was last laid out.
  int movedBy_ = 0;
};

}  // namespace nimbrel
