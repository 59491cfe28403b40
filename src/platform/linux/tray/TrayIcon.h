#pragma once

#include <QIcon>
#include <QPixmap>
#include <functional>

#include "platform/StatusItem.h"

namespace nimbrel {

/// The status item as one square picture: the symbol, with the title as a number in its corner. A tray tells
/// neither its colour nor how its icons are to look, so the symbol is drawn light with a dark rim and can be
/// made out on any ground.
class TrayIcon final {
 public:
  /// Draws a symbol in a square of so many pixels.
  using DrawSymbol = std::function<QPixmap(const QString& symbol, int side, const QColor& colour)>;

  explicit TrayIcon(DrawSymbol symbol) : symbol_(std::move(symbol)) {}

  /// `side` in pixels.
  [[nodiscard]] QPixmap pixmap(const StatusItemState& state, int side) const;

  /// In the sizes that trays have.
  [[nodiscard]] QIcon icon(const StatusItemState& state) const;

  static constexpr int kSides[] = {16, 22, 24, 32, 48, 64};

 private:
  DrawSymbol symbol_;
};

}  // namespace nimbrel
