#include "app/PanelPlacement.h"

#include <algorithm>

namespace nimbrel {
namespace {

constexpr int kGap = 10;
constexpr int kMargin = 8;

auto screenWith(const QPoint& pointer, const QList<ScreenFrame>& screens) {
  return std::find_if(screens.begin(), screens.end(),
                      [&](const ScreenFrame& candidate) { return candidate.frame.contains(pointer); });
}

}  // namespace

QPoint panelOrigin(const QSize& panel, const QPoint& pointer, const QList<ScreenFrame>& screens) {
  QPoint origin(pointer.x() - panel.width() / 2, pointer.y() + kGap);
  const auto screen = screenWith(pointer, screens);
  if (screen == screens.end()) return origin;
  const QRect& area = screen->visible;
  // The bounds that win when both cannot hold come last: right, and top.
  origin.setX(std::max(origin.x(), area.x() + kMargin));
  origin.setX(std::min(origin.x(), area.x() + area.width() - panel.width() - kMargin));
  origin.setY(std::min(origin.y(), area.y() + area.height() - panel.height() - kMargin));
  origin.setY(std::max(origin.y(), area.y() + kMargin));
  return origin;
}

QPoint centredOrigin(const QSize& window, const QPoint& pointer, const QList<ScreenFrame>& screens) {
  if (screens.isEmpty()) return {};
  const auto screen = screenWith(pointer, screens);
  const QRect area = (screen == screens.end() ? screens.first() : *screen).visible;
  return {area.x() + (area.width() - window.width()) / 2, area.y() + (area.height() - window.height()) / 2};
}

}  // namespace nimbrel
