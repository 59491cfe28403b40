#include "app/FloatingPanel.h"

#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QVBoxLayout>

#include "app/ResizeHandles.h"
#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

constexpr int kRadius = 12;
constexpr int kShadow = 24;

QPainterPath rounded(const QRectF& area, qreal radius) {
  QPainterPath path;
  path.addRoundedRect(area, radius, radius);
  return path;
}

/// A shadow is many faint frames on top of each other, each a little smaller.
void drawShadow(QPainter& painter, const QRect& panel) {
  painter.setPen(Qt::NoPen);
  for (int spread = kShadow; spread > 0; spread -= 2) {
    const qreal nearness = 1.0 - static_cast<qreal>(spread) / kShadow;
    painter.setBrush(QColor(0, 0, 0, static_cast<int>(2 + 9 * nearness * nearness)));
    const QRectF area =
        QRectF(panel).adjusted(-spread, -spread * 0.6, spread, spread).intersected(painter.window());
    painter.drawRoundedRect(area, kRadius + spread, kRadius + spread);
  }
}

}  // namespace

FloatingPanel::FloatingPanel() {
  setObjectName(QStringLiteral("floatingPanel"));
  setWindowTitle(QStringLiteral("Nimbrel"));
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setMinimumSize(kMinimumSize);
  setMaximumSize(kMaximumSize);
  resize(kSize);
  handles_ = new ResizeHandles(*this, {.visiblePart = [this] { return panelRect(); },
                                       .frame = [this] { return frame(); },
                                       .setFrame = [this](const QRect& drawn) { setFrame(drawn); }});
  connect(handles_, &ResizeHandles::resized, this, &FloatingPanel::resizedByUser);
  auto* const box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
}

void FloatingPanel::setContent(QWidget* content) {
  layout()->addWidget(content);
}

QRect FloatingPanel::frame() const {
  return window_ ? window_->frame() : geometry();
}

void FloatingPanel::setFrame(const QRect& frame) {
  if (window_)
    window_->setFrame(frame);
  else
    setGeometry(frame);
}

void FloatingPanel::setBackdrop(PanelWindow::Backdrop backdrop) {
  if (backdrop == backdrop_) return;
  const QSize size = panelSize();
  backdrop_ = backdrop;
  const int margin = shadowMargin();
  // The hairline of the border stays free.
  layout()->setContentsMargins(margin + 1, margin + 1, margin + 1, margin + 1);
  const QSize around(2 * margin, 2 * margin);
  setMinimumSize(kMinimumSize + around);
  setMaximumSize(kMaximumSize + around);
  resizePanel(size);
  shape();
}

int FloatingPanel::shadowMargin() const {
  return backdrop_ == PanelWindow::Backdrop::translucent ? kShadow : 0;
}

QRect FloatingPanel::panelRect() const {
  const int margin = shadowMargin();
  return rect().adjusted(margin, margin, -margin, -margin);
}

QSize FloatingPanel::panelSize() const {
  return panelRect().size();
}

void FloatingPanel::resizePanel(const QSize& size) {
  setFrame({frame().topLeft(), size + QSize(2 * shadowMargin(), 2 * shadowMargin())});
}

void FloatingPanel::movePanel(const QPoint& topLeft) {
  setFrame({topLeft - QPoint(shadowMargin(), shadowMargin()), frame().size()});
}

void FloatingPanel::paintEvent(QPaintEvent*) {
  const PanelTheme theme = panelTheme(palette());
  const QRect panel = panelRect();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (shadowMargin() > 0) drawShadow(painter, panel);
  painter.fillPath(rounded(panel, kRadius), theme.background);
  painter.setPen(theme.border);
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(panel).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

void FloatingPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  shape();
  handles_->place();
}

void FloatingPanel::shape() {
  if (backdrop_.value_or(PanelWindow::Backdrop::opaque) != PanelWindow::Backdrop::opaque)
    clearMask();
  else
    setMask(QRegion(rounded(rect(), kRadius).toFillPolygon().toPolygon()));
  Q_EMIT panelRectChanged();
}

}  // namespace nimbrel
