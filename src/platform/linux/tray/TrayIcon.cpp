#include "platform/linux/tray/TrayIcon.h"

#include <QFont>
#include <QPainter>
#include <algorithm>

namespace nimbrel {
namespace {

const QColor kInk(0xff, 0xff, 0xff);
const QColor kRim(0x20, 0x20, 0x24);
const QColor kBadge(0x2f, 0x6f, 0xd6);

/// What fits in the corner.
QString shortened(const QString& title) {
  return title.size() <= 2 ? title : QStringLiteral("99+");
}

void drawBadge(QPainter& painter, const QString& title, int side) {
  QFont font = painter.font();
  font.setBold(true);
  font.setPixelSize(std::max(7, side * 9 / 20));
  painter.setFont(font);
  const QString text = shortened(title);
  const int height = std::max(8, side * 11 / 20);
  const int width = std::min(side, std::max(height, QFontMetrics(font).horizontalAdvance(text) + side / 6));
  const QRect badge(side - width, side - height, width, height);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kBadge);
  painter.drawRoundedRect(badge, height / 2.0, height / 2.0);
  painter.setPen(kInk);
  painter.drawText(badge, Qt::AlignCenter, text);
}

}  // namespace

QPixmap TrayIcon::pixmap(const StatusItemState& state, int side) const {
  QPixmap canvas(side, side);
  canvas.fill(Qt::transparent);
  const int rim = std::max(1, side / 24);
  const int inner = side - 2 * rim;
  const QPixmap dark = symbol_(state.symbol, inner, kRim);
  const QPixmap light = symbol_(state.symbol, inner, kInk);
  QPainter painter(&canvas);
  painter.setRenderHint(QPainter::Antialiasing);
  for (int x = -rim; x <= rim; ++x) {
    for (int y = -rim; y <= rim; ++y)
      painter.drawPixmap(rim + x, rim + y, dark);
  }
  painter.drawPixmap(rim, rim, light);
  if (!state.title.isEmpty()) drawBadge(painter, state.title, side);
  return canvas;
}

QIcon TrayIcon::icon(const StatusItemState& state) const {
  QIcon icon;
  for (const int side : kSides)
    icon.addPixmap(pixmap(state, side));
  return icon;
}

}  // namespace nimbrel
