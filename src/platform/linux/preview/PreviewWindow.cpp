#include "platform/linux/preview/PreviewWindow.h"

#include <QCoreApplication>
#include <QGraphicsPixmapItem>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace nimbrel {
namespace {

constexpr QSize kSize{460, 440};
constexpr int kGap = 10;
constexpr int kMargin = 8;
constexpr int kRadius = 12;
constexpr int kIconSize = 96;
constexpr qreal kMaxZoom = 16;

QLabel* plainLabel(QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  return label;
}

QPainterPath outline(const QRectF& area) {
  QPainterPath path;
  path.addRoundedRect(area, kRadius, kRadius);
  return path;
}

}  // namespace

PictureView::PictureView(QWidget* parent) : QGraphicsView(parent) {
  setScene(&scene_);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setBackgroundBrush(Qt::transparent);
  viewport()->setAutoFillBackground(false);
  setRenderHint(QPainter::SmoothPixmapTransform);
  setDragMode(QGraphicsView::ScrollHandDrag);
  setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
}

void PictureView::show(const QImage& image) {
  scene_.clear();
  auto* const item = scene_.addPixmap(QPixmap::fromImage(image));
  item->setTransformationMode(Qt::SmoothTransformation);
  scene_.setSceneRect(item->boundingRect());
  fit();
}

void PictureView::fit() {
  fitted_ = true;
  resetTransform();
  const QRectF picture = sceneRect();
  const bool isLarger = picture.width() > viewport()->width() || picture.height() > viewport()->height();
  if (isLarger) fitInView(picture, Qt::KeepAspectRatio);
}

void PictureView::zoom(qreal factor) {
  const qreal wanted = transform().m11() * factor;
  if (wanted > kMaxZoom || wanted < 1 / kMaxZoom) return;
  fitted_ = false;
  scale(factor, factor);
}

void PictureView::wheelEvent(QWheelEvent* event) {
  constexpr qreal kNotch = 120;
  zoom(std::pow(1.25, event->angleDelta().y() / kNotch));
}

void PictureView::mouseDoubleClickEvent(QMouseEvent*) {
  fit();
}

void PictureView::resizeEvent(QResizeEvent* event) {
  QGraphicsView::resizeEvent(event);
  if (fitted_) fit();
}

PreviewWindow::PreviewWindow()
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::X11BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus) {
  setObjectName(QStringLiteral("previewWindow"));
  setWindowTitle(QCoreApplication::translate("PreviewWindow", "Vista rápida"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  resize(kSize);
  title_ = plainLabel(this);
  title_->setWordWrap(false);
  title_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* const close = new QToolButton(this);
  close->setText(QStringLiteral("✕"));
  close->setAutoRaise(true);
  close->setFocusPolicy(Qt::NoFocus);
  close->setAccessibleName(QCoreApplication::translate("PreviewWindow", "Cerrar"));
  connect(close, &QToolButton::clicked, this, &QWidget::hide);
  auto* const top = new QHBoxLayout;
  top->addSpacing(close->sizeHint().width());
  top->addWidget(title_, 1);
  top->addWidget(close);

  text_ = new QPlainTextEdit(this);
  text_->setReadOnly(true);
  text_->setTextInteractionFlags(Qt::NoTextInteraction);
  text_->setFocusPolicy(Qt::NoFocus);
  text_->setFrameShape(QFrame::NoFrame);
  text_->setUndoRedoEnabled(false);
  text_->viewport()->setAutoFillBackground(false);
  picture_ = new PictureView(this);
  facts_ = new QWidget(this);
  icon_ = plainLabel(facts_);
  name_ = plainLabel(facts_);
  QFont bold = name_->font();
  bold.setBold(true);
  name_->setFont(bold);
  details_ = plainLabel(facts_);
  auto* const column = new QVBoxLayout(facts_);
  column->addStretch();
  for (QLabel* const label : {icon_, name_, details_})
    column->addWidget(label);
  column->addStretch();
  nothing_ = plainLabel(this);
  pages_ = new QStackedWidget(this);
  for (QWidget* const page : {static_cast<QWidget*>(text_), static_cast<QWidget*>(picture_), facts_,
                              static_cast<QWidget*>(nothing_)})
    pages_->addWidget(page);
  note_ = plainLabel(this);
  note_->setText(QCoreApplication::translate("PreviewWindow", "Se muestra el principio del texto."));
  auto* const whole = new QVBoxLayout(this);
  whole->setContentsMargins(10, 6, 10, 10);
  whole->addLayout(top);
  whole->addWidget(pages_, 1);
  whole->addWidget(note_);
}

void PreviewWindow::setContent(const PreviewContent& content) {
  title_->setText(content.title);
  note_->hide();
  text_->clear();
  if (const auto* const text = std::get_if<PreviewText>(&content.body)) return showText(*text);
  if (const auto* const facts = std::get_if<PreviewFacts>(&content.body)) return showFacts(*facts);
  if (const auto* const picture = std::get_if<PreviewPicture>(&content.body)) {
    pages_->setCurrentWidget(picture_);
    return picture_->show(picture->image);
  }
  picture_->show({});
  pages_->setCurrentWidget(nothing_);
  nothing_->setText(std::holds_alternative<PreviewNothing>(content.body)
                        ? QCoreApplication::translate("PreviewWindow", "Nada que mostrar")
                        : QString());
}

void PreviewWindow::showText(const PreviewText& text) {
  text_->setPlainText(text.text);
  note_->setVisible(text.isCut);
  pages_->setCurrentWidget(text_);
}

void PreviewWindow::showFacts(const PreviewFacts& facts) {
  const QIcon icon = QIcon::fromTheme(facts.icon, QIcon::fromTheme(QStringLiteral("text-x-generic")));
  icon_->setPixmap(icon.pixmap(kIconSize));
  name_->setText(facts.name);
  QStringList details{facts.type};
  if (facts.isFolder)
    details.append(QCoreApplication::translate("PreviewWindow", "%n elemento(s)", nullptr,
                                               static_cast<int>(facts.size)));
  else if (facts.size >= 0)
    details.append(QLocale().formattedDataSize(facts.size));
  details_->setText(details.join(QStringLiteral(" · ")));
  pages_->setCurrentWidget(facts_);
}

void PreviewWindow::showBeside(const QRect& area) {
  const QScreen* const screen = QGuiApplication::screenAt(area.center());
  const QRect free = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
  const int right = area.right() + kGap;
  const int left = area.left() - kGap - width();
  // Where neither side has room, on the side with more of it.
  int x = right;
  if (right + width() > free.right() - kMargin)
    x = left >= free.left() + kMargin || area.left() - free.left() > free.right() - area.right() ? left
                                                                                                 : right;
  const auto within = [](int value, int low, int high) { return std::max(low, std::min(value, high)); };
  move(within(x, free.left() + kMargin, free.right() - width() - kMargin),
       within(area.top(), free.top() + kMargin, free.bottom() - height() - kMargin));
  show();
  raise();
}

void PreviewWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  QColor border = palette().color(QPalette::WindowText);
  border.setAlphaF(0.2F);
  painter.setPen(border);
  painter.drawPath(outline(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5)));
}

void PreviewWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  setMask(QRegion(outline(rect()).toFillPolygon().toPolygon()));
}

void PreviewWindow::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  setContent({});
  Q_EMIT closed();
}

}  // namespace nimbrel
