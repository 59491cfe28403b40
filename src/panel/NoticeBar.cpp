#include "panel/NoticeBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "panel/PanelTheme.h"
#include "panel/TextButton.h"

namespace nimbrel {
namespace {

constexpr int kLeastHeight = 36;
constexpr int kMargin = 12;
constexpr int kPadding = 6;

}  // namespace

NoticeBar::NoticeBar(QWidget* parent, std::chrono::milliseconds patience)
    : QWidget(parent), label_(new QLabel(this)), button_(new TextButton({}, TextButton::Tone::accent, this)) {
  setObjectName(QStringLiteral("noticeBar"));
  label_->setFont(panelFont(12));
  label_->setTextFormat(Qt::PlainText);
  label_->setWordWrap(true);
  button_->setObjectName(QStringLiteral("noticeButton"));
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(kMargin, 0, kPadding, 0);
  row->setSpacing(kPadding);
  row->addWidget(label_, 1);
  row->addWidget(button_);
  timer_.setSingleShot(true);
  timer_.setInterval(patience);
  connect(&timer_, &QTimer::timeout, this, &NoticeBar::dismiss);
  connect(button_, &TextButton::clicked, this, &NoticeBar::activated);
  hide();
}

void NoticeBar::say(const QString& text, const QString& button) {
  label_->setText(text);
  setAccessibleName(text);
  timer_.start();
  show();
  raise();
  setButton(button);
  Q_EMIT said();
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void NoticeBar::setButton(const QString& text) {
  const bool releases = text.isEmpty() && button_->hasFocus();
  button_->setText(text);
  button_->setFixedWidth(button_->sizeHint().width());
  button_->setVisible(!text.isEmpty());
  if (releases) Q_EMIT keyboardReleased();
}

void NoticeBar::dismiss() {
  if (isHidden()) return;
  timer_.stop();
  const bool releases = button_->hasFocus();
  hide();
  Q_EMIT dismissed();
  if (releases) Q_EMIT keyboardReleased();
}

int NoticeBar::heightForWidth(int width) const {
  const int beside = button_->isHidden() ? kPadding : button_->width() + 2 * kPadding;
  return std::max(kLeastHeight, label_->heightForWidth(width - kMargin - beside) + 2 * kPadding);
}

void NoticeBar::paintEvent(QPaintEvent*) {
  const PanelTheme theme = panelTheme(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(theme.border);
  painter.setBrush(theme.sheet);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 9, 9);
}

}  // namespace nimbrel
