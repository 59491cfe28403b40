#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace nimbrel {

/// One screen: its whole frame, and the part that docks and bars leave free.
struct ScreenFrame final {
  QRect frame;
  QRect visible;
};

/// Where the panel's top-left corner goes: centred under the pointer with its top edge 10 points below it,
/// kept 8 points inside the visible frame of the first screen that contains the pointer. A panel too large
/// for that ends up at the right and top margins; outside of every screen nothing is kept in. Coordinates
/// grow rightwards and downwards.
[[nodiscard]] QPoint panelOrigin(const QSize& panel, const QPoint& pointer,
                                 const QList<ScreenFrame>& screens);

/// Where a window's top-left corner goes to be in the middle of the visible frame of the first screen that
/// contains the pointer, or of the first of all when none does.
[[nodiscard]] QPoint centredOrigin(const QSize& window, const QPoint& pointer,
                                   const QList<ScreenFrame>& screens);

}  // namespace nimbrel
