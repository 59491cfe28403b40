#include "look/Tones.h"

namespace nimbrel {

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QColor blend(const QColor& over, const QColor& under, double share) {
  const auto mix = [share](float a, float b) { return static_cast<float>(a * share + b * (1 - share)); };
  return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
                          mix(over.blueF(), under.blueF()));
}

QColor wellColor(const QPalette& palette) {
  return isDark(palette) ? QColor(0x4c, 0xc3, 0x8a) : QColor(0x18, 0x7a, 0x45);
}

QColor warningColor(const QPalette& palette) {
  return isDark(palette) ? QColor(0xf5, 0xb9, 0x42) : QColor(0xb4, 0x3c, 0x09);
}

}  // namespace nimbrel
