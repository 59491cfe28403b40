#include "panel/Banner.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "look/Symbols.h"
#include "panel/PanelTheme.h"
#include "panel/TextButton.h"

namespace nimbrel {
namespace {

constexpr int kSymbolSide = 16;
constexpr int kMargin = 9;
constexpr int kHeight = 34;

const BannerTones& tonesOf(const PanelTheme& theme, Banner::Tone tone) {
  return tone == Banner::Tone::alarm ? theme.alarm : theme.notice;
}

}  // namespace

Banner::Banner(const QString& name, const QString& symbol, const QString& text, const QString& button,
               Tone tone, QWidget* parent)
    : QWidget(parent), symbol_(symbol), tone_(tone), label_(new QLabel(text, this)) {
  setObjectName(name);
  setAccessibleName(text);
  setMinimumHeight(kHeight);
  label_->setFont(panelFont(12));
  label_->setWordWrap(true);
  label_->setTextFormat(Qt::PlainText);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(kMargin + kSymbolSide + 8, 4, 5, 4);
  row->setSpacing(8);
  row->addWidget(label_, 1);
  if (!button.isEmpty()) {
    const auto buttonTone = tone == Tone::alarm ? TextButton::Tone::alarm : TextButton::Tone::notice;
    auto* const action = new TextButton(button, buttonTone, this);
    row->addWidget(action);
    connect(action, &TextButton::clicked, this, &Banner::activated);
  }
  applyTheme();
}

void Banner::applyTheme() {
  QPalette colors = label_->palette();
  colors.setColor(QPalette::WindowText, tonesOf(panelTheme(palette()), tone_).text);
  if (colors != label_->palette()) label_->setPalette(colors);
}

void Banner::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && label_) applyTheme();
}

void Banner::paintEvent(QPaintEvent*) {
  const BannerTones tones = tonesOf(panelTheme(palette()), tone_);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(tones.line);
  painter.setBrush(tones.background);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
  const QRect square(kMargin, (height() - kSymbolSide) / 2, kSymbolSide, kSymbolSide);
  symbols::draw(painter, square, symbol_, tones.text);
}

}  // namespace nimbrel
