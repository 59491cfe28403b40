#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

#include "platform/PanelWindow.h"
#include "platform/linux/X11Session.h"

namespace nimbrel {

/// A window that the window manager does not manage, with the keyboard grabbed, as menus do it: input focus
/// and active window stay where they are, so the application in front keeps looking active, and giving the
/// keyboard back is letting go of it.
///
/// Where the keyboard cannot be grabbed, and after half a minute without a key, so that a screen lock finds
/// the keyboard free, the panel borrows the input focus instead and gives it back to the same window.
class X11PanelWindow final : public QObject, public PanelWindow, private QAbstractNativeEventFilter {
 public:
  /// Both must outlive this.
  X11PanelWindow(QWidget& widget, X11Session& session);
  ~X11PanelWindow() override;

  [[nodiscard]] Backdrop backdrop() override;
  [[nodiscard]] QRect frame() const override;
  void setFrame(const QRect& frame) override;
  void setPanelArea(const QRect& area) override;
  void present() override;
  void dismiss(bool returnFocus) override;
  void whenFocusReturned(std::function<void(bool)> done) override;
  void stepBack() override;
  void comeForward() override;
  void setResignHandler(std::function<void()> handler) override { resignHandler_ = std::move(handler); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Loan { none, keyboard, focus };

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  void reactivate();
  void takeKeyboard(int attemptsLeft);
  [[nodiscard]] bool grabKeyboard();
  void borrowFocus();
  void pretendFocus(bool focused);
  void handle(const xcb_generic_event_t& event);
  void resign();
  void shapeInput();
  /// Whether a point of the screen belongs to one of the program's windows.
  [[nodiscard]] bool isOurs(const QPoint& point) const;
  void releaseKeyboard();
  void letGo();
  /// Where the panel has the focus, whoever had it before gets it.
  void giveFocusBack();
  void stayBelowFocus();
  [[nodiscard]] xcb_window_t topLevelOf(xcb_window_t window);
  /// Notes who has the keyboard, to give it back.
  void rememberFocus();
  void checkFocus();
  [[nodiscard]] bool focusIsBack();
  [[nodiscard]] xcb_window_t window() const;

  QWidget& widget_;
  X11Session& session_;
  /// Qt's own connection, which sees the window's requests and events in order.
  xcb_connection_t* qt_ = nullptr;
  QRect panelArea_;
  bool presented_ = false;
  Loan loan_ = Loan::none;
  std::uint16_t superMask_ = XCB_MOD_MASK_4;
  xcb_window_t previousFocus_ = XCB_WINDOW_NONE;
  std::uint8_t previousRevertTo_ = XCB_INPUT_FOCUS_PARENT;
  std::function<void()> resignHandler_;
  std::function<void(bool)> focusHandler_;
  QTimer focusTimer_;
  int focusChecksLeft_ = 0;
  /// Whether the user has turned to another window and left the panel open.
  bool left_ = false;
  QTimer idleTimer_;
  /// Runs while another window may come up that belongs above the panel.
  QTimer stackingTimer_;
};

}  // namespace nimbrel
