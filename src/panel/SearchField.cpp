#include "panel/SearchField.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QToolButton>
#include <utility>

#include "look/Symbols.h"
#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

constexpr int kHeight = 30;
constexpr int kSymbolSize = 16;
constexpr int kMargin = 9;
/// Nobody searches for more; a pasted novel must not become a query.
constexpr int kMaxQueryLength = 1000;

}  // namespace

SearchField::SearchField(PasteboardText pasteboardText, QWidget* parent)
    : PasteField(std::move(pasteboardText), parent), clear_(new QToolButton(this)) {
  setObjectName(QStringLiteral("searchField"));
  setFrame(false);
  setFixedHeight(kHeight);
  setFont(panelFont(13));
  setTextMargins(kMargin + kSymbolSize + 3, 0, kMargin + kSymbolSize + 3, 0);
  setPlaceholderText(QCoreApplication::translate("ContentView", "Buscar…"));
  setAccessibleName(QCoreApplication::translate("ContentView", "Buscar en el historial"));
  setAttribute(Qt::WA_MacShowFocusRect, false);
  setMaxLength(kMaxQueryLength);
  clear_->setObjectName(QStringLiteral("clearSearch"));
  clear_->setAutoRaise(true);
  clear_->setFocusPolicy(Qt::NoFocus);
  clear_->setCursor(Qt::ArrowCursor);
  clear_->setStyleSheet(QStringLiteral("border: none; background: transparent; padding: 0"));
  clear_->setAccessibleName(QCoreApplication::translate("ContentView", "Borrar la búsqueda"));
  clear_->setToolTip(clear_->accessibleName());
  clear_->hide();
  connect(clear_, &QToolButton::clicked, this, &QLineEdit::clear);
  connect(this, &QLineEdit::textChanged, clear_,
          [this](const QString& text) { clear_->setVisible(!text.isEmpty()); });
  applyTheme();
}

void SearchField::applyTheme() {
  const PanelTheme theme = panelTheme(parentWidget()->palette());
  QPalette colors = palette();
  colors.setColor(QPalette::Base, Qt::transparent);
  colors.setColor(QPalette::Text, theme.text);
  colors.setColor(QPalette::PlaceholderText, theme.placeholder);
  colors.setColor(QPalette::Highlight, theme.accent);
  colors.setColor(QPalette::HighlightedText, theme.background);
  if (colors != palette()) setPalette(colors);
  clear_->setIcon(symbols::icon(QStringLiteral("xmark.circle.fill"), theme.secondaryText));
}

void SearchField::changeEvent(QEvent* event) {
  PasteField::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && clear_) applyTheme();
}

void SearchField::resizeEvent(QResizeEvent* event) {
  PasteField::resizeEvent(event);
  const int side = kSymbolSize + 4;
  clear_->setGeometry(width() - kMargin - side + 2, (height() - side) / 2, side, side);
}

void SearchField::paintEvent(QPaintEvent* event) {
  const PanelTheme theme = panelTheme(parentWidget()->palette());
  {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(theme.selectionBorder, 2) : QPen(Qt::NoPen));
    painter.setBrush(theme.field);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);
    const QRect symbol(kMargin, (height() - kSymbolSize) / 2, kSymbolSize, kSymbolSize);
    symbols::draw(painter, symbol, QStringLiteral("magnifyingglass"), theme.secondaryText);
  }
  PasteField::paintEvent(event);
}

}  // namespace nimbrel
