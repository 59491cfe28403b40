#pragma once

#include <QWidget>
#include <optional>

#include "platform/PanelWindow.h"

namespace nimbrel {

class ResizeHandles;

/// The history panel's window: a rounded frame around its content, with a soft shadow where the desktop
/// blends windows. How it floats, where it is and how it takes the keyboard is the platform's affair.
class FloatingPanel final : public QWidget {
  Q_OBJECT

 public:
  static constexpr QSize kSize{480, 440};
  static constexpr QSize kMinimumSize{340, 440};
  static constexpr QSize kMaximumSize{640, 640};

  FloatingPanel();

  /// Puts the content into the frame; the panel takes it over.
  void setContent(QWidget* content);

  /// What from now on moves and resizes the panel, until it is given none; before that it does so by itself.
  void setWindow(PanelWindow* window) { window_ = window; }

  /// By this the shadow is drawn or not, and the corners are smooth.
  void setBackdrop(PanelWindow::Backdrop backdrop);

  /// The panel without its shadow.
  [[nodiscard]] QSize panelSize() const;
  /// The panel without its shadow, in the window and on the screen.
  [[nodiscard]] QRect panelRect() const;
  [[nodiscard]] QRect panelArea() const { return panelRect().translated(frame().topLeft()); }
  void resizePanel(const QSize& size);
  void movePanel(const QPoint& topLeft);

 Q_SIGNALS:
  /// The user has drawn the panel to another size.
  void resizedByUser();
  /// The panel is another part of the window.
  void panelRectChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] int shadowMargin() const;
  [[nodiscard]] QRect frame() const;
  void setFrame(const QRect& frame);
  void shape();

  PanelWindow* window_ = nullptr;
  /// Nothing before it is known.
  std::optional<PanelWindow::Backdrop> backdrop_;
  ResizeHandles* handles_;
};

}  // namespace nimbrel
