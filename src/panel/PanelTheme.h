#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace nimbrel {

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

  [[nodiscard]] bool operator==(const PanelTheme&) const = default;
};

/// Dark when the palette's window colour is darker than its text.
[[nodiscard]] PanelTheme panelTheme(const QPalette& palette);

/// The interface font at a size in pixels.
[[nodiscard]] QFont panelFont(qreal pixels, QFont::Weight weight = QFont::Normal);

}  // namespace nimbrel
