#include "app/hotkeys/HotKeyRecorder.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <algorithm>
#include <utility>

#include "look/PlainText.h"
#include "look/Tones.h"

namespace nimbrel {
namespace {

constexpr int kFieldWidth = 128;
constexpr int kFieldMargin = 24;

}  // namespace

HotKeyRecorder::HotKeyRecorder(const KeyReader& keys, HotKeyDispatcher& dispatcher, const QString& title,
                               Apply apply, QWidget* parent)
    : QWidget(parent),
      dispatcher_(dispatcher),
      title_(title),
      apply_(std::move(apply)),
      message_(new QLabel(this)),
      field_(new QStackedWidget(this)),
      button_(new QPushButton(this)),
      capture_(new KeyCaptureView(
          keys, [this](const PressedKey& key) { take(key); }, this)) {
  message_->setObjectName(QStringLiteral("hotKeyMessage"));
  button_->setObjectName(QStringLiteral("hotKeyButton"));
  button_->setAutoDefault(false);
  capture_->setAccessibleName(tr("Pulsa el atajo…"));
  field_->addWidget(button_);
  field_->addWidget(capture_);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addStretch();
  row->addWidget(message_);
  row->addWidget(field_);
  const int textWidth = fontMetrics().horizontalAdvance(capture_->accessibleName());
  field_->setFixedSize(std::max(kFieldWidth, textWidth + kFieldMargin), button_->sizeHint().height());
  showWarningColor();
  connect(button_, &QPushButton::clicked, this, &HotKeyRecorder::startRecording);
  connect(capture_, &KeyCaptureView::turnedAway, this, &HotKeyRecorder::stopRecording);
}

HotKeyRecorder::~HotKeyRecorder() {
  stopRecording();
}

void HotKeyRecorder::setCombo(const HotKeyCombo& combo) {
  button_->setText(plainButtonText(combo.displayString()));
  button_->setAccessibleName(tr("%1: %2").arg(title_, combo.spokenString()));
}

void HotKeyRecorder::startRecording() {
  if (std::exchange(recording_, true)) return;
  dispatcher_.suspend();
  field_->setCurrentWidget(capture_);
  capture_->startCapture();
}

void HotKeyRecorder::stopRecording() {
  if (!std::exchange(recording_, false)) return;
  const bool hadFocus = capture_->hasFocus();
  capture_->stopCapture();
  field_->setCurrentWidget(button_);
  if (hadFocus) button_->setFocus(Qt::OtherFocusReason);
  dispatcher_.resume();
}

void HotKeyRecorder::take(const PressedKey& key) {
  if (key.keyCode == kEscapeKeyCode) return stopRecording();
  const auto combo = recordedCombo(key);
  if (!combo) return setMessage(tr("Usa ⌘, ⌥ o ⌃"));
  stopRecording();
  setMessage(apply_(*combo) ? QString() : tr("Ya está en uso"));
}

void HotKeyRecorder::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) showWarningColor();
}

void HotKeyRecorder::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  // What was wrong then is of no interest at the next visit.
  if (!event->spontaneous()) setMessage({});
}

void HotKeyRecorder::showWarningColor() {
  QPalette colors = palette();
  colors.setColor(QPalette::WindowText, warningColor(palette()));
  message_->setPalette(colors);
}

void HotKeyRecorder::setMessage(const QString& message) {
  message_->setText(message);
  if (message.isEmpty()) return;
  QAccessibleEvent alert(message_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace nimbrel
