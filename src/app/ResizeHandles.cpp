#include "app/ResizeHandles.h"

#include <QMouseEvent>
#include <QWidget>
#include <algorithm>
#include <array>

namespace nimbrel {
namespace {

/// Narrow enough to leave alone what is beside the edge.
constexpr int kThickness = 5;
constexpr int kCorner = 12;

constexpr std::array<Qt::Edges, 8> kEdges{Qt::LeftEdge, Qt::RightEdge, Qt::TopEdge, Qt::BottomEdge,
                                          // Corners last, above the edges.
                                          Qt::LeftEdge | Qt::TopEdge, Qt::RightEdge | Qt::TopEdge,
                                          Qt::LeftEdge | Qt::BottomEdge, Qt::RightEdge | Qt::BottomEdge};

Qt::CursorShape cursorOf(Qt::Edges edges) {
  if (edges == Qt::LeftEdge || edges == Qt::RightEdge) return Qt::SizeHorCursor;
  if (edges == Qt::TopEdge || edges == Qt::BottomEdge) return Qt::SizeVerCursor;
  const bool falling = edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge);
  return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

QRect areaOf(Qt::Edges edges, const QRect& panel) {
  const bool corner = (edges & (Qt::LeftEdge | Qt::RightEdge)) && (edges & (Qt::TopEdge | Qt::BottomEdge));
  const int side = corner ? kCorner : kThickness;
  QRect area = panel;
  if (edges & Qt::LeftEdge) area.setWidth(side);
  if (edges & Qt::RightEdge) area.setLeft(panel.right() - side + 1);
  if (edges & Qt::TopEdge) area.setHeight(side);
  if (edges & Qt::BottomEdge) area.setTop(panel.bottom() - side + 1);
  return area;
}

/// A window's geometry after its edges were drawn by a distance, within its size limits.
QRect drawn(const QRect& before, Qt::Edges edges, const QPoint& by, const QWidget& window) {
  const QSize least = window.minimumSize();
  const QSize most = window.maximumSize();
  QRect after = before;
  const int wider = edges & Qt::LeftEdge ? -by.x() : edges & Qt::RightEdge ? by.x() : 0;
  const int taller = edges & Qt::TopEdge ? -by.y() : edges & Qt::BottomEdge ? by.y() : 0;
  const QSize size(std::clamp(before.width() + wider, least.width(), most.width()),
                   std::clamp(before.height() + taller, least.height(), most.height()));
  if (edges & Qt::LeftEdge) after.setLeft(before.right() - size.width() + 1);
  if (edges & Qt::TopEdge) after.setTop(before.bottom() - size.height() + 1);
  after.setSize(size);
  return after;
}

}  // namespace

class ResizeHandles::Handle final : public QWidget {
 public:
  Handle(Qt::Edges drawnEdges, QWidget& panel, ResizeHandles& owner)
      : QWidget(&panel), edges(drawnEdges), panel_(panel), owner_(owner) {
    setCursor(cursorOf(edges));
  }

  const Qt::Edges edges;

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    pressed_ = event->globalPosition().toPoint();
    before_ = owner_.access_.frame();
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (event->buttons() & Qt::LeftButton)
      owner_.access_.setFrame(drawn(before_, edges, event->globalPosition().toPoint() - pressed_, panel_));
  }
  void mouseReleaseEvent(QMouseEvent*) override {
    if (owner_.access_.frame() != before_) Q_EMIT owner_.resized();
  }

 private:
  QWidget& panel_;
  ResizeHandles& owner_;
  QPoint pressed_;
  QRect before_;
};

ResizeHandles::ResizeHandles(QWidget& panel, Access access) : QObject(&panel), access_(std::move(access)) {
  for (const Qt::Edges edges : kEdges)
    handles_.append(new Handle(edges, panel, *this));
}

void ResizeHandles::place() {
  const QRect panel = access_.visiblePart();
  for (Handle* const handle : handles_) {
    handle->setGeometry(areaOf(handle->edges, panel));
    handle->raise();
  }
}

}  // namespace nimbrel
