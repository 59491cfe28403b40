#include "app/Screens.h"

#include <QGuiApplication>
#include <QScreen>

namespace nimbrel {

QList<ScreenFrame> screenFrames() {
  QList<ScreenFrame> frames;
  const auto screens = QGuiApplication::screens();
  for (const QScreen* screen : screens)
    frames.append({screen->geometry(), screen->availableGeometry()});
  return frames;
}

}  // namespace nimbrel
