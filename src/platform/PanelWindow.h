#pragma once

#include <QRect>
#include <functional>

class QWidget;

namespace nimbrel {

/// Makes a top-level widget a panel that floats above all and takes the keyboard while the application in
/// front stays the active one. Main thread. The widget outlives the panel window.
class PanelWindow {
 public:
  virtual ~PanelWindow() = default;

  /// What the desktop makes of the translucent parts of the widget.
  enum class Backdrop {
    /// They show nothing of what is behind.
    opaque,
    /// The desktop shows through.
    translucent,
    /// The desktop shows through, with a shadow of the other parts.
    shadowed,
  };
  [[nodiscard]] virtual Backdrop backdrop() = 0;

  /// Where the widget is on the screen, in the toolkit's coordinates.
  [[nodiscard]] virtual QRect frame() const = 0;
  /// Moves and resizes the widget; nobody else may.
  virtual void setFrame(const QRect& frame) = 0;

  /// The part of the widget that is the panel: a click beside it, in its shadow, is meant for what is below.
  /// In the widget's coordinates.
  virtual void setPanelArea(const QRect& area) = 0;

  /// Shows the widget where it is and gives it the keyboard, remembering who had it.
  virtual void present() = 0;

  /// Takes the panel off the screen. `returnFocus` gives the keyboard back to the window that had it; without
  /// it the focus stays where the user has put it meanwhile.
  virtual void dismiss(bool returnFocus) = 0;

  /// Calls `done` on the main thread with true as soon as the window that had the keyboard before has it
  /// again, or with false when it has not got it within 300 ms.
  virtual void whenFocusReturned(std::function<void(bool)> done) = 0;

  /// Lets a window of the system's that is about to come up have the keyboard, and stand above the panel. The
  /// panel stays on the screen; what is typed until then goes nowhere else.
  virtual void stepBack() = 0;

  /// Takes the keyboard again, and stands above all; nothing for a panel that is not on the screen.
  virtual void comeForward() = 0;

  /// Called on the main thread when the panel loses the keyboard to another window or the user clicks outside
  /// it. A panel that stays on the screen all the same is without the keyboard until it comes forward, or is
  /// clicked.
  virtual void setResignHandler(std::function<void()> handler) = 0;
};

}  // namespace nimbrel
