#pragma once

#include <QList>
#include <QObject>
#include <functional>

class QWidget;

namespace nimbrel {

/// The edges and corners of a panel without a frame, by which the user draws it larger or smaller. Main
/// thread.
class ResizeHandles final : public QObject {
  Q_OBJECT

 public:
  /// Puts handles along the edges of the panel's visible part, which `visiblePart` tells.
  ResizeHandles(QWidget& panel, std::function<QRect()> visiblePart);

  /// Puts them where the visible part is by now, above everything else in the panel.
  void place();

 Q_SIGNALS:
  /// The user has let go of an edge.
  void resized();

 private:
  class Handle;

  std::function<QRect()> visiblePart_;
  QList<Handle*> handles_;
};

}  // namespace nimbrel
