#include "panel/SymbolButton.h"

#include <QPainter>

#include "look/PlainText.h"
#include "look/Symbols.h"
#include "panel/PanelTheme.h"

namespace nimbrel {

SymbolButton::SymbolButton(const QString& symbol, const QString& label, QWidget* parent, int side)
    : QToolButton(parent), symbol_(symbol) {
  setFixedSize(side, side);
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::ArrowCursor);
  setLabel(label);
}

void SymbolButton::setSymbol(const QString& symbol) {
  if (symbol == symbol_) return;
  symbol_ = symbol;
  update();
}

void SymbolButton::setLabel(const QString& label) {
  setAccessibleName(label);
  setToolTip(plainToolTip(label));
}

void SymbolButton::setActive(bool active) {
  if (active == active_) return;
  active_ = active;
  update();
}

void SymbolButton::paintEvent(QPaintEvent*) {
  const PanelTheme theme = panelTheme(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool raised = active_ || isDown() || underMouse();
  painter.setPen(hasFocus() ? QPen(theme.accent, 2) : QPen(Qt::NoPen));
  painter.setBrush(active_ ? theme.chip : raised ? theme.field : QColor(Qt::transparent));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 7, 7);
  const int side = width() >= 28 ? 16 : width() >= 22 ? 14 : 12;
  QRect square(0, 0, side, side);
  square.moveCenter(rect().center());
  QColor color = active_ ? theme.accent : theme.secondaryText;
  if (!isEnabled()) color.setAlphaF(0.4F);
  symbols::draw(painter, square, symbol_, color);
}

}  // namespace nimbrel
