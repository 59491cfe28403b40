#include "panel/HintLine.h"

#include <QCoreApplication>
#include <QPainter>
#include <QUrl>

#include "capture/model/LinkText.h"
#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

constexpr int kHeight = 26;
constexpr int kMargin = 12;
constexpr qreal kLargest = 11;
constexpr qreal kSmallest = 9.5;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ContentView)
};

QFont fittingFont(const QString& text, int width, const QPaintDevice* device) {
  QFont font = panelFont(kLargest);
  for (qreal points = kLargest; points >= kSmallest; points -= 0.5) {
    // Fractions of a pixel only exist as point sizes; at 72 points to the inch they are the same.
    font.setPointSizeF(points * 72.0 / device->logicalDpiY());
    if (QFontMetrics(font, device).horizontalAdvance(text) <= width) break;
  }
  return font;
}

/// Whether a clip refers to a file by what can be one's address.
bool refersToFile(const ClipItem& clip) {
  const QUrl url(clip.fileURLString.value_or(QString()).section(u'\n', 0, 0), QUrl::StrictMode);
  return !url.isEmpty() && url.isValid();
}

}  // namespace

QString hintFor(const ClipItem* selected) {
  if (selected && selected->isImage() && selected->ocrText && !selected->ocrText->isEmpty())
    return Texts::tr(
        "↑↓ elegir   ↩ pegar imagen   ⌘T pegar su texto   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida");
  if (selected && refersToFile(*selected))
    return Texts::tr("↑↓ elegir   ↩ pegar archivo   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida");
  if (selected && linkOf(*selected))
    return Texts::tr(
        "↑↓ elegir   ↩ pegar   ⌘O abrir enlace   ⌘↩ sin formato   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida");
  return Texts::tr(
      "↑↓ elegir   ↩ pegar   ⌘1–9 directo   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida   ⌘↩ sin formato");
}

HintLine::HintLine(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("hintLine"));
  setFixedHeight(kHeight);
}

void HintLine::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  setAccessibleName(text);
  update();
}

void HintLine::paintEvent(QPaintEvent*) {
  const PanelTheme theme = panelTheme(palette());
  QPainter painter(this);
  painter.fillRect(0, 0, width(), 1, theme.hairline);
  const QRect area = rect().adjusted(kMargin, 1, -kMargin, 0);
  painter.setFont(fittingFont(text_, area.width(), this));
  painter.setPen(theme.secondaryText);
  const QString shown = painter.fontMetrics().elidedText(text_, Qt::ElideRight, area.width());
  painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

}  // namespace nimbrel
