#include "app/hotkeys/KeyCaptureView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <utility>

namespace nimbrel {
namespace {

bool endsCapture(QEvent::Type type) {
  return type == QEvent::FocusOut || type == QEvent::Hide || type == QEvent::WindowDeactivate;
}

}  // namespace

KeyCaptureView::KeyCaptureView(const KeyReader& keys, OnKey onKey, QWidget* parent)
    : QWidget(parent), keys_(keys), onKey_(std::move(onKey)) {
  setFocusPolicy(Qt::StrongFocus);
  setObjectName(QStringLiteral("keyCapture"));
  patience_.setSingleShot(true);
  patience_.setInterval(kPatience);
  connect(&patience_, &QTimer::timeout, this, &KeyCaptureView::turnedAway);
}

KeyCaptureView::~KeyCaptureView() {
  stopCapture();
}

void KeyCaptureView::startCapture() {
  setFocus(Qt::OtherFocusReason);
  capturing_ = true;
  grabKeyboard();
  qApp->installEventFilter(this);
  patience_.start();
}

void KeyCaptureView::stopCapture() {
  if (!std::exchange(capturing_, false)) return;
  patience_.stop();
  qApp->removeEventFilter(this);
  releaseKeyboard();
}

bool KeyCaptureView::event(QEvent* event) {
  if (!capturing_) return QWidget::event(event);
  if (endsCapture(event->type())) Q_EMIT turnedAway();
  // No key may become a shortcut of the window.
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  if (event->type() != QEvent::KeyPress) return QWidget::event(event);
  const auto& press = *static_cast<QKeyEvent*>(event);
  if (press.isAutoRepeat()) return true;
  patience_.start();
  const auto key = keys_.read(press);
  if (key) onKey_(*key);
  return true;
}

bool KeyCaptureView::eventFilter(QObject* watched, QEvent* event) {
  // Whoever clicks elsewhere has done with the keyboard here; the click itself goes on.
  if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType() && watched != this)
    Q_EMIT turnedAway();
  return QWidget::eventFilter(watched, event);
}

bool KeyCaptureView::focusNextPrevChild(bool next) {
  return !capturing_ && QWidget::focusNextPrevChild(next);
}

void KeyCaptureView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOptionFrame frame;
  frame.initFrom(this);
  frame.lineWidth = 1;
  frame.state |= QStyle::State_Sunken | QStyle::State_HasFocus;
  style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(rect(), Qt::AlignCenter, accessibleName());
}

}  // namespace nimbrel
