#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace nimbrel {

/// A symbol as the desktop itself draws it, in a square of so many pixels; a null image where it draws none
/// of that name. Main thread.
[[nodiscard]] QImage systemSymbol(const QString& name, int pixels, const QColor& color);

}  // namespace nimbrel
