#include "look/Symbols.h"

#include <QPaintDevice>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "platform/symbols/SystemSymbols.h"

// The macro must stand outside of any namespace.
static void initSymbolResources() {
  Q_INIT_RESOURCE(symbols);
}

namespace nimbrel::symbols {
namespace {

/// As the program draws it.
QPixmap draw(const QString& name, int size, const QColor& color, qreal devicePixelRatio) {
  initSymbolResources();
  QSvgRenderer renderer(QStringLiteral(":/symbols/") + name);
  if (!renderer.isValid()) return {};
  QPixmap pixmap(QSize(size, size) * devicePixelRatio);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  renderer.render(&painter, QRectF(0, 0, size, size));
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(QRectF(0, 0, size, size), color);
  return pixmap;
}

QPixmap render(const QString& name, int size, const QColor& color, qreal devicePixelRatio) {
  const int pixels = qRound(size * devicePixelRatio);
  QPixmap own = QPixmap::fromImage(systemSymbol(name, pixels, color));
  if (own.isNull()) return draw(name, size, color, devicePixelRatio);
  own.setDevicePixelRatio(devicePixelRatio);
  return own;
}

}  // namespace

QPixmap pixmap(const QString& name, int size, const QColor& color, qreal devicePixelRatio) {
  const QString key =
      QStringLiteral("symbol/%1/%2/%3/%4").arg(name).arg(size).arg(color.rgba()).arg(devicePixelRatio);
  QPixmap cached;
  if (QPixmapCache::find(key, &cached)) return cached;
  cached = render(name, size, color, devicePixelRatio);
  QPixmapCache::insert(key, cached);
  return cached;
}

QIcon icon(const QString& name, const QColor& color, const QColor& selected) {
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 48}) {
    icon.addPixmap(pixmap(name, size, color, 1.0));
    if (selected.isValid()) icon.addPixmap(pixmap(name, size, selected, 1.0), QIcon::Selected);
  }
  return icon;
}

void draw(QPainter& painter, const QRect& square, const QString& name, const QColor& color) {
  painter.drawPixmap(square, pixmap(name, square.width(), color, painter.device()->devicePixelRatio()));
}

}  // namespace nimbrel::symbols
