#include "platform/linux/X11PanelWindow.h"

#include <xcb/shape.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include "platform/linux/X11Keyboard.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kFocusCheckInterval = 5ms;
constexpr auto kFocusTimeout = 300ms;
/// Another program may hold the keyboard for a moment, as menus and hot keys do.
constexpr auto kGrabRetryInterval = 10ms;
constexpr int kGrabAttempts = 10;
constexpr auto kGrabIdleTimeout = 30s;
/// How soon a window that comes up is seen to have come.
constexpr auto kStackingInterval = 50ms;

/// Buttons 4 to 7 are the wheel.
bool isClick(std::uint32_t button) {
  return button < 4 || button > 7;
}

xcb_connection_t* qtConnection() {
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

}  // namespace

X11PanelWindow::X11PanelWindow(QWidget& widget, X11Session& session)
    : widget_(widget), session_(session), qt_(qtConnection()) {
  // Whenever a widget of the panel is given the focus while a menu of the panel is open, Qt would have the
  // window activated and so take the input focus from the application in front; it must not.
  widget_.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                         Qt::X11BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
  qApp->installEventFilter(this);
  qApp->installNativeEventFilter(this);
  focusTimer_.setInterval(kFocusCheckInterval);
  connect(&focusTimer_, &QTimer::timeout, this, &X11PanelWindow::checkFocus);
  idleTimer_.setSingleShot(true);
  idleTimer_.setInterval(kGrabIdleTimeout);
  connect(&idleTimer_, &QTimer::timeout, this, &X11PanelWindow::borrowFocus);
  stackingTimer_.setInterval(kStackingInterval);
  connect(&stackingTimer_, &QTimer::timeout, this, &X11PanelWindow::stayBelowFocus);
  if (!session_.isConnected()) return;
  superMask_ = X11Keyboard(session_).modifiers().super;
  session_.addEventHandler(this, [this](const xcb_generic_event_t& event) { handle(event); });
}

X11PanelWindow::~X11PanelWindow() {
  qApp->removeNativeEventFilter(this);
  qApp->removeEventFilter(this);
}

xcb_window_t X11PanelWindow::window() const {
  return static_cast<xcb_window_t>(widget_.winId());
}

PanelWindow::Backdrop X11PanelWindow::backdrop() {
  if (!session_.isConnected()) return Backdrop::opaque;
  // A compositing manager owns this selection (Extended Window Manager Hints).
  const auto owner = session_.reply(
      xcb_get_selection_owner_reply,
      xcb_get_selection_owner(session_.connection(), session_.atoms().atom(QStringLiteral("_NET_WM_CM_S0"))));
  return owner && owner->owner != XCB_WINDOW_NONE ? Backdrop::translucent : Backdrop::opaque;
}

QRect X11PanelWindow::frame() const {
  return widget_.geometry();
}

void X11PanelWindow::setFrame(const QRect& frame) {
  widget_.setGeometry(frame);
}

void X11PanelWindow::setPanelArea(const QRect& area) {
  panelArea_ = area;
  if (presented_) shapeInput();
}

void X11PanelWindow::shapeInput() {
  if (!qt_ || panelArea_.isEmpty()) return;
  const qreal ratio = widget_.devicePixelRatioF();
  const QRect area(panelArea_.topLeft() * ratio, panelArea_.size() * ratio);
  const xcb_rectangle_t rectangle{static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                                  static_cast<std::uint16_t>(area.width()),
                                  static_cast<std::uint16_t>(area.height())};
  // On Qt's connection, so that the window is there by the time the server reads this; it asks nobody.
  const xcb_xfixes_region_t region = xcb_generate_id(qt_);
  xcb_xfixes_create_region(qt_, region, 1, &rectangle);
  xcb_xfixes_set_window_shape_region(qt_, window(), XCB_SHAPE_SK_INPUT, 0, 0, region);
  xcb_xfixes_destroy_region(qt_, region);
  xcb_flush(qt_);
}

bool X11PanelWindow::isOurs(const QPoint& point) const {
  const QWindow* const hit = QGuiApplication::topLevelAt(point);
  if (!hit || hit != widget_.windowHandle() || panelArea_.isEmpty()) return hit != nullptr;
  return panelArea_.translated(widget_.geometry().topLeft()).contains(point);
}

void X11PanelWindow::present() {
  if (!session_.isConnected()) return widget_.show();
  // What was pasted before is not to arrive in another window now.
  focusTimer_.stop();
  focusHandler_ = {};
  session_.watchRawEvents(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS, true);
  rememberFocus();
  presented_ = true;
  widget_.show();
  shapeInput();
  widget_.raise();
  reactivate();
  if (!qt_) return;
  // The hot key that brought us here still holds the keyboard, until its key is released.
  xcb_ungrab_keyboard(session_.connection(), XCB_CURRENT_TIME);
  session_.flush();
  takeKeyboard(kGrabAttempts);
}

void X11PanelWindow::reactivate() {
  // Qt believes in a lost focus only after 400 ms. Until then a window that comes back is, to its windows,
  // the one that has the focus all along, while its widgets know that it was hidden.
  const bool stale = widget_.windowHandle() && QGuiApplication::focusWindow() == widget_.windowHandle();
  if (!stale || QApplication::activeWindow() == &widget_) return;
  QT_WARNING_PUSH
  QT_WARNING_DISABLE_DEPRECATED
  QApplication::setActiveWindow(&widget_);
  QT_WARNING_POP
}

void X11PanelWindow::takeKeyboard(int attemptsLeft) {
  if (!presented_ || !qt_ || loan_ == Loan::focus) return;
  if (grabKeyboard()) {
    loan_ = Loan::keyboard;
    idleTimer_.start();
    pretendFocus(true);
    return;
  }
  if (attemptsLeft <= 1) return borrowFocus();
  QTimer::singleShot(kGrabRetryInterval, this, [this, attemptsLeft] { takeKeyboard(attemptsLeft - 1); });
}

bool X11PanelWindow::grabKeyboard() {
  const auto cookie =
      xcb_grab_keyboard(qt_, 0, window(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbPointer<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(qt_, cookie, nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void X11PanelWindow::borrowFocus() {
  if (!presented_ || !qt_) return;
  const bool hadGrab = std::exchange(loan_, Loan::focus) == Loan::keyboard;
  // On Qt's connection, so that the window is mapped by the time the server reads this.
  xcb_set_input_focus(qt_, XCB_INPUT_FOCUS_PARENT, window(), XCB_CURRENT_TIME);
  if (hadGrab) xcb_ungrab_keyboard(qt_, XCB_CURRENT_TIME);
  xcb_flush(qt_);
}

void X11PanelWindow::pretendFocus(bool focused) {
  // Qt gives keys, dead keys and input methods to the window that it believes has the focus.
  xcb_focus_in_event_t event{};
  event.response_type = focused ? XCB_FOCUS_IN : XCB_FOCUS_OUT;
  event.event = window();
  event.detail = XCB_NOTIFY_DETAIL_NONLINEAR;
  event.mode = XCB_NOTIFY_MODE_NORMAL;
  sendEvent(qt_, window(), event);
  xcb_flush(qt_);
}

void X11PanelWindow::releaseKeyboard() {
  pretendFocus(false);
  xcb_ungrab_keyboard(qt_, XCB_CURRENT_TIME);
  xcb_flush(qt_);
}

void X11PanelWindow::dismiss(bool returnFocus) {
  presented_ = false;
  left_ = false;
  idleTimer_.stop();
  stackingTimer_.stop();
  session_.watchRawEvents(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS, false);
  const Loan loan = std::exchange(loan_, Loan::none);
  if (loan == Loan::keyboard) releaseKeyboard();
  // Before the window goes, so that the focus is never nobody's; also where the user has turned to something
  // that takes no focus.
  if (loan != Loan::keyboard || returnFocus) giveFocusBack();
  widget_.hide();
}

void X11PanelWindow::stepBack() {
  if (!presented_ || !session_.isConnected()) return;
  idleTimer_.stop();
  borrowFocus();
  stackingTimer_.start();
}

void X11PanelWindow::comeForward() {
  if (!presented_ || !session_.isConnected()) return;
  stackingTimer_.stop();
  widget_.raise();
  if (std::exchange(left_, false)) rememberFocus();
  if (loan_ == Loan::keyboard) return;
  loan_ = Loan::none;
  giveFocusBack();
  takeKeyboard(kGrabAttempts);
}

void X11PanelWindow::giveFocusBack() {
  if (!qt_ || session_.focusWindow() != window()) return;
  xcb_window_t heir = previousFocus_;
  if (heir == XCB_WINDOW_NONE) heir = XCB_INPUT_FOCUS_POINTER_ROOT;
  // On Qt's connection, so that what follows there comes after it.
  xcb_set_input_focus(qt_, previousRevertTo_, heir, XCB_CURRENT_TIME);
  xcb_flush(qt_);
}

void X11PanelWindow::letGo() {
  idleTimer_.stop();
  const bool grabbed = std::exchange(loan_, Loan::none) == Loan::keyboard;
  if (!stackingTimer_.isActive()) giveFocusBack();
  if (grabbed) releaseKeyboard();
}

xcb_window_t X11PanelWindow::topLevelOf(xcb_window_t window) {
  constexpr int kMaxDepth = 16;
  for (int depth = 0; depth < kMaxDepth && window > XCB_INPUT_FOCUS_POINTER_ROOT; ++depth) {
    const xcb_window_t parent = session_.parentOf(window);
    if (parent == session_.root()) return window;
    window = parent;
  }
  return XCB_WINDOW_NONE;
}

void X11PanelWindow::stayBelowFocus() {
  const xcb_window_t top = topLevelOf(session_.focusWindow());
  if (top == XCB_WINDOW_NONE || top == window() || top == topLevelOf(previousFocus_)) return;
  constexpr std::uint16_t kMask = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
  const std::uint32_t values[] = {top, XCB_STACK_MODE_BELOW};
  xcb_configure_window(session_.connection(), window(), kMask, values);
  session_.flush();
}

void X11PanelWindow::rememberFocus() {
  const auto focus = session_.reply(xcb_get_input_focus_reply, xcb_get_input_focus(session_.connection()));
  if (!focus || focus->focus == window()) return;
  previousFocus_ = focus->focus;
  previousRevertTo_ = focus->revert_to;
  if (previousFocus_ <= XCB_INPUT_FOCUS_POINTER_ROOT || previousFocus_ == session_.root()) return;
  // To hear of its end.
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(session_.connection(), previousFocus_, XCB_CW_EVENT_MASK, &events);
  session_.flush();
}

void X11PanelWindow::whenFocusReturned(std::function<void(bool)> done) {
  focusHandler_ = std::move(done);
  focusChecksLeft_ = kFocusTimeout / kFocusCheckInterval;
  focusTimer_.start();
  checkFocus();
}

void X11PanelWindow::checkFocus() {
  const bool back = focusIsBack();
  if (!back && --focusChecksLeft_ > 0) return;
  focusTimer_.stop();
  if (const auto handler = std::exchange(focusHandler_, {})) handler(back);
}

bool X11PanelWindow::focusIsBack() {
  constexpr int kMaxDepth = 8;
  // Without a window that had the keyboard there is none that the keystroke is meant for.
  if (presented_ || previousFocus_ <= XCB_INPUT_FOCUS_POINTER_ROOT || previousFocus_ == session_.root())
    return false;
  xcb_window_t window = session_.focusWindow();
  if (window == previousFocus_) return true;
  // Some programs put the focus on a window inside their own as soon as they get it.
  for (int depth = 0; depth < kMaxDepth && window > XCB_INPUT_FOCUS_POINTER_ROOT && window != session_.root();
       ++depth) {
    window = session_.parentOf(window);
    if (window == previousFocus_) return true;
  }
  return false;
}

bool X11PanelWindow::eventFilter(QObject* watched, QEvent* event) {
  // A click on the panel that has lost the keyboard asks for it again.
  const bool clicked = event->type() == QEvent::MouseButtonPress && watched->isWidgetType() &&
                       (watched == &widget_ || widget_.isAncestorOf(static_cast<QWidget*>(watched)));
  if (clicked && presented_ && loan_ == Loan::none && !stackingTimer_.isActive()) comeForward();
  if (watched == &widget_ && event->type() == QEvent::WindowDeactivate && loan_ == Loan::focus) resign();
  // A menu of the panel grabs the keyboard for itself and lets go of it when it closes.
  const bool menuClosed = event->type() == QEvent::Hide && watched != &widget_ && watched->isWidgetType() &&
                          static_cast<QWidget*>(watched)->windowType() == Qt::Popup;
  if (menuClosed && loan_ == Loan::keyboard)
    QMetaObject::invokeMethod(
        this, [this] { takeKeyboard(kGrabAttempts); }, Qt::QueuedConnection);
  return QObject::eventFilter(watched, event);
}

bool X11PanelWindow::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (!presented_ || type != "xcb_generic_event_t") return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  const int kind = eventType(event);
  if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE) return false;
  const auto& key = eventAs<xcb_key_press_event_t>(event);
  if (key.event != window() || loan_ != Loan::keyboard) return false;
  idleTimer_.start();
  // While the keyboard is grabbed here, the hot keys are not told of their keys by the server.
  session_.distribute(event);
  return (key.state & superMask_) != 0;
}

void X11PanelWindow::handle(const xcb_generic_event_t& event) {
  // Its number may come to mean another window.
  if (eventType(event) == XCB_DESTROY_NOTIFY &&
      eventAs<xcb_destroy_notify_event_t>(event).window == previousFocus_)
    previousFocus_ = XCB_WINDOW_NONE;
  if (!presented_ || session_.rawEventType(event) != XCB_INPUT_RAW_BUTTON_PRESS) return;
  const auto& press = eventAs<xcb_input_raw_button_press_event_t>(event);
  // The click itself goes where it was meant; the panel only learns that it was not meant for it.
  if (!isClick(press.detail) || isOurs(QCursor::pos())) return;
  resign();
  // The window that was clicked is the one to paste into, should the panel be turned to once more.
  left_ = presented_ && !stackingTimer_.isActive();
}

void X11PanelWindow::resign() {
  if (!presented_ || QApplication::activePopupWidget() || !resignHandler_) return;
  resignHandler_();
  if (presented_) letGo();
}

}  // namespace nimbrel
