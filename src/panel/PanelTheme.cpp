#include "panel/PanelTheme.h"

#include <QGuiApplication>

#include "look/Tones.h"

namespace nimbrel {
namespace {

PanelTheme lightTheme() {
  return {.background = QColor(0xfb, 0xfb, 0xfd),
          .border = QColor(0, 0, 0, 0x2e),
          .hairline = QColor(0, 0, 0, 0x12),
          .text = QColor(0x1c, 0x1c, 0x1f),
          .secondaryText = QColor(0x60, 0x60, 0x68),
          .placeholder = QColor(0x6c, 0x6c, 0x74),
          .field = QColor(0, 0, 0, 0x0d),
          .accent = QColor(0x0b, 0x62, 0xd6),
          .selection = QColor(0x0b, 0x62, 0xd6, 0x1f),
          .selectionBorder = QColor(0x0b, 0x62, 0xd6, 0x59),
          .badge = QColor(0, 0, 0, 0x0f)};
}

PanelTheme darkTheme() {
  return {.background = QColor(0x23, 0x23, 0x27),
          .border = QColor(0xff, 0xff, 0xff, 0x2e),
          .hairline = QColor(0xff, 0xff, 0xff, 0x14),
          .text = QColor(0xf2, 0xf2, 0xf5),
          .secondaryText = QColor(0xad, 0xad, 0xb7),
          .placeholder = QColor(0x9c, 0x9c, 0xa6),
          .field = QColor(0xff, 0xff, 0xff, 0x14),
          .accent = QColor(0x5a, 0xa2, 0xff),
          .selection = QColor(0x5a, 0xa2, 0xff, 0x2e),
          .selectionBorder = QColor(0x5a, 0xa2, 0xff, 0x73),
          .badge = QColor(0xff, 0xff, 0xff, 0x17)};
}

}  // namespace

PanelTheme panelTheme(const QPalette& palette) {
  return isDark(palette) ? darkTheme() : lightTheme();
}

QFont panelFont(qreal pixels, QFont::Weight weight) {
  QFont font = QGuiApplication::font();
  // The application's font has its size in points; the panel's drawing is in device-independent pixels.
  font.setPixelSize(qRound(pixels));
  font.setWeight(weight);
  return font;
}

}  // namespace nimbrel
