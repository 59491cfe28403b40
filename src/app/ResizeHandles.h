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
  /// How the panel is seen and moved.
  struct Access final {
    /// The part of the widget that has the edges.
    std::function<QRect()> visiblePart;
    /// Where the widget is on the screen.
    std::function<QRect()> frame;
    std::function<void(const QRect&)> setFrame;
  };

  /// Puts handles along the edges of the panel.
  ResizeHandles(QWidget& panel, Access access);

  /// Puts them where the visible part is by now, above everything else in the panel.
  void place();

 Q_SIGNALS:
  /// The user has let go of an edge.
  void resized();

 private:
  class Handle;

  Access access_;
  QList<Handle*> handles_;
};

}  // namespace nimbrel
