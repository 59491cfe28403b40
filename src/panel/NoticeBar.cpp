#include "panel/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "panel/PanelTheme.h"
#include "panel/TextButton.h"

namespace nimbrel {
namespace {

constexpr int kHeight = 36;

}  // namespace

NoticeBar::NoticeBar(QWidget* parent, std::chrono::milliseconds patience)
    : QWidget(parent), label_(new QLabel(this)), button_(new TextButton({}, TextButton::Tone::accent, this)) {
  setObjectName(QStringLiteral("noticeBar"));
  setFixedHeight(kHeight);
  label_->setFont(panelFont(12));
  label_->setTextFormat(Qt::PlainText);
  label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  button_->setObjectName(QStringLiteral("noticeButton"));
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(12, 0, 6, 0);
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
  button_->setText(button);
  button_->setVisible(!button.isEmpty());
  button_->setFixedWidth(button_->sizeHint().width());
  timer_.start();
  show();
  raise();
}

void NoticeBar::dismiss() {
  if (isHidden()) return;
  timer_.stop();
  const bool hadKeyboard = button_->hasFocus();
  hide();
  Q_EMIT dismissed(hadKeyboard);
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
