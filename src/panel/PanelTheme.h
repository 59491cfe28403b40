#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <array>

namespace nimbrel {

/// How a banner looks: its surface, its text and symbol, its outline.
struct BannerTones final {
  QColor background;
  QColor text;
  QColor line;

  [[nodiscard]] bool operator==(const BannerTones&) const = default;
};

/// The panel's colours and type, light or dark as the system's palette is.
struct PanelTheme final {
  QColor background;
  QColor border;
  QColor hairline;
  QColor text;
  QColor secondaryText;
  QColor placeholder;
  QColor field;
  QColor accent;
  QColor selection;
  QColor selectionBorder;
  QColor badge;
  /// The chosen tab.
  QColor segment;
  QColor segmentBorder;
  QColor chip;
  QColor chipText;
  /// Dialogs and notices, which lie over the rest, and what dims that.
  QColor sheet;
  QColor veil;
  /// What cannot be undone.
  QColor danger;
  BannerTones notice;
  BannerTones alarm;

  [[nodiscard]] bool operator==(const PanelTheme&) const = default;
};

/// Dark when the palette's window colour is darker than its text.
[[nodiscard]] PanelTheme panelTheme(const QPalette& palette);

/// The surfaces of the tiles that stand for applications; what is on them is white.
inline constexpr std::array<QRgb, 8> kTileColors{0xff2f6bc9, 0xff23794f, 0xffb0501d, 0xff7450cc,
                                                 0xff50555f, 0xffb53c6d, 0xff18748a, 0xff7d6116};

/// The interface font at a size in pixels.
[[nodiscard]] QFont panelFont(qreal pixels, QFont::Weight weight = QFont::Normal);

}  // namespace nimbrel
