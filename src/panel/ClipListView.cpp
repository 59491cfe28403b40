#include "panel/ClipListView.h"

#include <QApplication>
#include <QDrag>
#include <QHoverEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <climits>
#include <memory>
#include <utility>

#include "look/Symbols.h"
#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

constexpr int kDragWidth = 220;
/// Where the pointer holds what is dragged, from its left edge.
constexpr int kDragInset = 12;

}  // namespace

ClipListView::ClipListView(QWidget* parent) : QListView(parent) {
  setFrameShape(QFrame::NoFrame);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setDragDropMode(QAbstractItemView::DragOnly);
  // Where the list stands is decided by the keys and by what comes and goes, not by which row is current.
  setAutoScroll(false);
  setFocusPolicy(Qt::TabFocus);
  setMouseTracking(true);
  viewport()->setAutoFillBackground(false);
  viewport()->setAttribute(Qt::WA_Hover);
}

void ClipListView::setClips(ClipListModel* model) {
  clips_ = model;
  setModel(model);
  followRows(*model);
  reset();
}

void ClipListView::followRows(const ClipListModel& model) {
  connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] { dropAnchor({}); });
  connect(&model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int first, int last) {
    for (int row = first; row <= last; ++row)
      geometry_.insert(row, clips_->clipAt(row)->clip.isImage());
    shift();
  });
  connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
          [this](const QModelIndex&, int first, int last) {
            dropAnchor({first, last});
          });
  connect(&model, &QAbstractItemModel::rowsRemoved, this, [this](const QModelIndex&, int first, int last) {
    geometry_.remove(first, last);
    shift();
    // What has gone, a secret whose time is over perhaps, is not to arrive anywhere.
    if (isDragging_ && !dragged_.isValid()) QDrag::cancel();
  });
  connect(&model, &QAbstractItemModel::rowsAboutToBeMoved, this, [this](const QModelIndex&, int from) {
    dropAnchor({from, from});
  });
  connect(&model, &QAbstractItemModel::rowsMoved, this,
          [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
            geometry_.move(from, to > from ? to - 1 : to);
            shift();
          });
}

void ClipListView::setEmptyText(const QString& text) {
  if (text == emptyText_) return;
  emptyText_ = text;
  setAccessibleDescription(text);
  viewport()->update();
}

void ClipListView::reset() {
  QListView::reset();
  if (!clips_) return;
  geometry_.reset(clips_->rowCount(), clips_->imageRows());
  hovered_ = QPersistentModelIndex();
  verticalScrollBar()->setValue(0);
  shift();
}

void ClipListView::doItemsLayout() {
  QAbstractItemView::doItemsLayout();
}

void ClipListView::dropAnchor(const Rows& leaving) {
  const auto stays = [&](const QModelIndex& index) {
    return index.isValid() && (index.row() < leaving.first || index.row() > leaving.last);
  };
  const auto place = [this](int row) { return geometry_.top(row) - verticalOffset(); };
  anchor_ = QModelIndex();
  if (!stays(hovered_) && verticalOffset() == 0) return;
  const QModelIndex index = stays(hovered_) ? QModelIndex(hovered_) : clips_->index(firstShown());
  if (stays(index)) {
    anchor_ = index;
    anchorTop_ = place(index.row());
  } else {
    // The row behind those that leave comes where they were.
    anchor_ = clips_->index(leaving.last + 1);
    anchorTop_ = std::max(0, place(leaving.first));
  }
}

int ClipListView::firstShown() const {
  return geometry_.rowAt(verticalOffset());
}

void ClipListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                               const QList<int>& roles) {
  QListView::dataChanged(topLeft, bottomRight, roles);
  if (!clips_ || topLeft.row() != bottomRight.row() || topLeft.row() >= geometry_.rows()) return;
  const bool tall = clips_->clipAt(topLeft.row())->clip.isImage();
  if (tall == geometry_.isTall(topLeft.row())) return viewport()->update(visualRect(topLeft));
  dropAnchor({});
  geometry_.setTall(topLeft.row(), tall);
  shift();
}

void ClipListView::shift() {
  updateGeometries();
  const QModelIndex anchor = std::exchange(anchor_, {});
  if (anchor.isValid()) verticalScrollBar()->setValue(geometry_.top(anchor.row()) - anchorTop_);
  viewport()->update();
  hoverAt(viewport()->mapFromGlobal(QCursor::pos()));
  Q_EMIT rowsShifted();
}

void ClipListView::moveEvent(QMoveEvent* event) {
  QListView::moveEvent(event);
  movedBy_ += event->pos().y() - event->oldPos().y();
}

void ClipListView::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  const int distance = std::exchange(movedBy_, 0);
  // What comes or goes above the list leaves the row under the pointer where it is on the screen.
  if (distance != 0 && isVisible() && viewport()->underMouse())
    verticalScrollBar()->setValue(verticalOffset() + distance);
  Q_EMIT rowsShifted();
}

QRect ClipListView::visualRect(const QModelIndex& index) const {
  if (!index.isValid() || index.row() >= geometry_.rows()) return {};
  return {0, geometry_.top(index.row()) - verticalOffset(), viewport()->width(),
          geometry_.height(index.row())};
}

QModelIndex ClipListView::indexAt(const QPoint& point) const {
  const int y = point.y() + verticalOffset();
  if (!clips_ || y < 0 || y >= geometry_.top(geometry_.rows())) return {};
  return clips_->index(geometry_.rowAt(y));
}

int ClipListView::rowsPerPage() const {
  return std::max(1, viewport()->height() / RowGeometry::kLow - 1);
}

void ClipListView::scrollTo(const QModelIndex& index, ScrollHint) {
  if (!index.isValid() || index.row() >= geometry_.rows()) return;
  const int top = geometry_.top(index.row());
  const int bottom = top + geometry_.height(index.row());
  if (top < verticalOffset())
    verticalScrollBar()->setValue(top);
  else if (bottom > verticalOffset() + viewport()->height())
    verticalScrollBar()->setValue(bottom - viewport()->height());
}

void ClipListView::updateGeometries() {
  QAbstractItemView::updateGeometries();
  QScrollBar* const bar = verticalScrollBar();
  bar->setSingleStep(RowGeometry::kLow);
  bar->setPageStep(viewport()->height());
  bar->setRange(0, std::max(0, geometry_.top(geometry_.rows()) - viewport()->height()));
}

int ClipListView::verticalOffset() const {
  return verticalScrollBar()->value();
}

void ClipListView::scrollContentsBy(int, int) {
  viewport()->update();
  hoverAt(viewport()->mapFromGlobal(QCursor::pos()));
  Q_EMIT rowsShifted();
}

QModelIndex ClipListView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  const int count = geometry_.rows();
  if (count == 0) return {};
  const int row = currentIndex().isValid() ? currentIndex().row() : -1;
  const auto at = [&](int wanted) { return clips_->index(std::clamp(wanted, 0, count - 1)); };
  switch (action) {
    case MoveUp:
    case MovePrevious:
      return at(row - 1);
    case MoveDown:
    case MoveNext:
      return at(row + 1);
    case MovePageUp:
      return at(row - rowsPerPage());
    case MovePageDown:
      return at(row + rowsPerPage());
    case MoveHome:
      return at(0);
    case MoveEnd:
      return at(count - 1);
    case MoveLeft:
    case MoveRight:
      break;
  }
  return currentIndex();
}

void ClipListView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) {
  const QModelIndex index = indexAt(rect.topLeft());
  if (index.isValid()) selectionModel()->select(index, flags);
}

QRegion ClipListView::visualRegionForSelection(const QItemSelection& selection) const {
  QRegion region;
  for (const QItemSelectionRange& range : selection)
    region += visualRect(range.topLeft()) | visualRect(range.bottomRight());
  return region & viewport()->rect();
}

bool ClipListView::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
      hoverAt(static_cast<QHoverEvent*>(event)->position().toPoint());
      break;
    case QEvent::HoverLeave:
    case QEvent::Leave:
      hoverAt({-1, -1});
      break;
    default:
      break;
  }
  return QListView::viewportEvent(event);
}

void ClipListView::hoverAt(const QPoint& point) {
  const bool inside = viewport()->rect().contains(point) && viewport()->underMouse();
  const QModelIndex index = inside ? indexAt(point) : QModelIndex();
  if (index == hovered_) return;
  viewport()->update(visualRect(hovered_));
  hovered_ = index;
  viewport()->update(visualRect(hovered_));
  Q_EMIT rowsShifted();
}

void ClipListView::mousePressEvent(QMouseEvent* event) {
  pressedAt_ = event->position().toPoint();
  pressed_ = event->button() == Qt::LeftButton ? indexAt(pressedAt_) : QModelIndex();
  QListView::mousePressEvent(event);
}

void ClipListView::mouseMoveEvent(QMouseEvent* event) {
  // Qt would choose every row on the way.
  const QPoint way = event->position().toPoint() - pressedAt_;
  if (!(event->buttons() & Qt::LeftButton) || way.manhattanLength() < QApplication::startDragDistance())
    return;
  drag(std::exchange(pressed_, {}));
}

void ClipListView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return mousePressEvent(event);
  QListView::mouseDoubleClickEvent(event);
}

void ClipListView::drag(const QModelIndex& index) {
  if (!index.isValid() || !(clips_->flags(index) & Qt::ItemIsDragEnabled)) return;
  std::unique_ptr<QMimeData> content(clips_->mimeData({index}));
  if (!content) return;
  auto* const drag = new QDrag(this);
  drag->setMimeData(content.release());
  drag->setPixmap(pictureOf(index));
  drag->setHotSpot({kDragInset, drag->pixmap().height() / 2});
  dragged_ = index;
  isDragging_ = true;
  drag->exec(Qt::CopyAction);
  isDragging_ = false;
}

QPixmap ClipListView::pictureOf(const QModelIndex& index) const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  // Enough to know it by, and not so much that it hides where it is dropped.
  option.rect = QRect(QPoint(), visualRect(index).size().boundedTo({kDragWidth, INT_MAX}));
  option.state = QStyle::State_Selected;
  QPixmap picture(option.rect.size() * devicePixelRatioF());
  picture.setDevicePixelRatio(devicePixelRatioF());
  picture.fill(panelTheme(palette()).background);
  QPainter painter(&picture);
  itemDelegate()->paint(&painter, option, index);
  return picture;
}

void ClipListView::keyPressEvent(QKeyEvent* event) {
  event->ignore();
}

void ClipListView::focusInEvent(QFocusEvent* event) {
  QListView::focusInEvent(event);
  viewport()->update();
  Q_EMIT rowsShifted();
}

void ClipListView::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  viewport()->update();
  Q_EMIT rowsShifted();
}

void ClipListView::paintEmpty(QPainter& painter) const {
  constexpr int kSymbol = 36;
  const PanelTheme theme = panelTheme(palette());
  const QRect area = viewport()->rect();
  QColor faint = theme.secondaryText;
  faint.setAlphaF(0.45F);
  QRect square(0, 0, kSymbol, kSymbol);
  square.moveCenter(area.center() - QPoint(0, kSymbol));
  const bool searched = !clips_ || !clips_->query().matchesAll();
  symbols::draw(painter, square,
                searched ? QStringLiteral("magnifyingglass") : QStringLiteral("doc.on.clipboard"), faint);
  painter.setFont(panelFont(13));
  painter.setPen(theme.secondaryText);
  painter.drawText(area, Qt::AlignCenter, emptyText_);
}

void ClipListView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  if (geometry_.rows() == 0) return paintEmpty(painter);
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  const QModelIndex current = currentIndex();
  const int bottom = event->rect().bottom() + verticalOffset();
  for (int row = geometry_.rowAt(event->rect().top() + verticalOffset());
       row < geometry_.rows() && geometry_.top(row) <= bottom; ++row) {
    const QModelIndex index = clips_->index(row);
    option.rect = visualRect(index);
    option.state.setFlag(QStyle::State_Selected, index == current);
    option.state.setFlag(QStyle::State_MouseOver, index == hovered_);
    option.state.setFlag(QStyle::State_HasFocus, index == current && hasFocus());
    itemDelegate()->paint(&painter, option, index);
  }
}

}  // namespace nimbrel
