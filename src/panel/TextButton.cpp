#include "panel/TextButton.h"

#include <QPainter>

#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

constexpr int kPadding = 10;
constexpr int kHeight = 24;

struct ButtonColors {
  QColor surface;
  QColor text;
  QColor line;
};

ButtonColors colorsOf(TextButton::Tone tone, const PanelTheme& theme) {
  switch (tone) {
    case TextButton::Tone::plain:
      return {Qt::transparent, theme.text, theme.border};
    case TextButton::Tone::accent:
      return {theme.chip, theme.chipText, theme.selectionBorder};
    case TextButton::Tone::danger:
      return {Qt::transparent, theme.danger, theme.danger};
    case TextButton::Tone::notice:
      return {Qt::transparent, theme.notice.text, theme.notice.line};
    case TextButton::Tone::alarm:
      break;
  }
  return {Qt::transparent, theme.alarm.text, theme.alarm.line};
}

}  // namespace

TextButton::TextButton(const QString& text, Tone tone, QWidget* parent)
    : QPushButton(text, parent), tone_(tone) {
  setFont(panelFont(12, QFont::DemiBold));
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::ArrowCursor);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TextButton::sizeHint() const {
  return {fontMetrics().horizontalAdvance(text()) + 2 * kPadding, kHeight};
}

void TextButton::paintEvent(QPaintEvent*) {
  const PanelTheme theme = panelTheme(palette());
  const ButtonColors colors = colorsOf(tone_, theme);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(hasFocus() ? QPen(theme.accent, 2) : QPen(colors.line));
  painter.setBrush(isDown() || underMouse() ? theme.field : colors.surface);
  const qreal inset = hasFocus() ? 1 : 0.5;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), 6, 6);
  QColor ink = colors.text;
  if (!isEnabled()) ink.setAlphaF(0.4F);
  painter.setPen(ink);
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace nimbrel
