#pragma once

#include <QColor>
#include <QPalette>

namespace nimbrel {

/// Whether a palette's windows are darker than what is written on them.
[[nodiscard]] bool isDark(const QPalette& palette);

/// A colour laid over another; `share` is how much of it is seen, from 0 to 1.
[[nodiscard]] QColor blend(const QColor& over, const QColor& under, double share);

/// The colours for what is well and for what needs attention, legible on a palette's windows.
[[nodiscard]] QColor wellColor(const QPalette& palette);
[[nodiscard]] QColor warningColor(const QPalette& palette);

}  // namespace nimbrel
