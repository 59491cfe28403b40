#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QString>

namespace nimbrel {

/// Symbols by the names of the system symbols, tinted with a colour: the system's own where it has them, else
/// the program's drawings.
namespace symbols {

/// A symbol in a square of `size` device-independent pixels, sharp at the given device pixel ratio; rendered
/// once and then taken from the pixmap cache. A null pixmap for an unknown name.
[[nodiscard]] QPixmap pixmap(const QString& name, int size, const QColor& color, qreal devicePixelRatio);

/// A symbol as an icon in several sizes; in a selected row it has a colour of its own when one is given.
[[nodiscard]] QIcon icon(const QString& name, const QColor& color, const QColor& selected = {});

void draw(QPainter& painter, const QRect& square, const QString& name, const QColor& color);

}  // namespace symbols
}  // namespace nimbrel
