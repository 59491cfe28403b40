#pragma once

#include <QObject>
#include <QTimer>

#include "platform/PanelWindow.h"
#include "platform/linux/X11Session.h"

namespace nimbrel {

/// A window that the window manager does not manage: the application in front stays the active one, while the input
/// focus, and with it the keyboard, is borrowed and given back.
class X11PanelWindow final : public QObject, public PanelWindow {
 public:
  /// Both must outlive this.
  X11PanelWindow(QWidget& widget, X11Session& session);

  [[nodiscard]] bool blendsWithDesktop() const override;
  void present() override;
  void dismiss(bool returnFocus) override;
  void whenFocusReturned(std::function<void(bool)> done) override;
  void setResignHandler(std::function<void()> handler) override { resignHandler_ = std::move(handler); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void watchClicks();
  void handle(const xcb_generic_event_t& event);
  void resign();
  void checkFocus();
  [[nodiscard]] bool focusIsBack();

  QWidget& widget_;
  X11Session& session_;
  int inputExtension_ = -1;
  bool presented_ = false;
  xcb_window_t previousFocus_ = XCB_WINDOW_NONE;
  std::uint8_t previousRevertTo_ = XCB_INPUT_FOCUS_PARENT;
  std::function<void()> resignHandler_;
  std::function<void(bool)> focusHandler_;
  QTimer focusTimer_;
  int focusChecksLeft_ = 0;
};

}  // namespace nimbrel
