#include "platform/linux/X11PanelWindow.h"

#include <xcb/xinput.h>

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QWidget>

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kFocusCheckInterval = 5ms;
constexpr auto kFocusTimeout = 300ms;

/// Buttons 4 to 7 are the wheel.
bool isClick(std::uint32_t button) { return button < 4 || button > 7; }

}  // namespace

X11PanelWindow::X11PanelWindow(QWidget& widget, X11Session& session) : widget_(widget), session_(session) {
  widget_.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                         Qt::X11BypassWindowManagerHint);
  widget_.installEventFilter(this);
  focusTimer_.setInterval(kFocusCheckInterval);
  connect(&focusTimer_, &QTimer::timeout, this, &X11PanelWindow::checkFocus);
  if (!session_.isConnected()) return;
  session_.addEventHandler(this, [this](const xcb_generic_event_t& event) { handle(event); });
  watchClicks();
}

void X11PanelWindow::watchClicks() {
  const auto* const extension = xcb_get_extension_data(session_.connection(), &xcb_input_id);
  if (!extension || !extension->present) return;
  static_cast<void>(session_.reply(xcb_input_xi_query_version_reply,
                                   xcb_input_xi_query_version(session_.connection(), 2, 2)));
  inputExtension_ = extension->major_opcode;
  const struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS};
  xcb_input_xi_select_events(session_.connection(), session_.root(), 1, &selection.head);
  session_.flush();
}

bool X11PanelWindow::blendsWithDesktop() const {
  if (!session_.isConnected()) return false;
  // A compositing manager owns this selection (Extended Window Manager Hints).
  const auto owner = session_.reply(
      xcb_get_selection_owner_reply,
      xcb_get_selection_owner(session_.connection(), session_.atoms().atom(QStringLiteral("_NET_WM_CM_S0"))));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

void X11PanelWindow::present() {
  const auto focus = session_.reply(xcb_get_input_focus_reply, xcb_get_input_focus(session_.connection()));
  const bool wasOurs = focus && focus->focus == widget_.winId();
  if (focus && !wasOurs) {
    previousFocus_ = focus->focus;
    previousRevertTo_ = focus->revert_to;
  }
  presented_ = true;
  widget_.show();
  widget_.raise();
  // On Qt's own connection, so that the window is mapped by the time the server reads this.
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return;
  xcb_set_input_focus(x11->connection(), XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(widget_.winId()),
                      XCB_CURRENT_TIME);
  xcb_flush(x11->connection());
}

void X11PanelWindow::dismiss(bool returnFocus) {
  presented_ = false;
  if (returnFocus && session_.focusWindow() == widget_.winId()) {
    // Before the window goes, so that the focus is never nobody's.
    xcb_set_input_focus(session_.connection(), previousRevertTo_, previousFocus_, XCB_CURRENT_TIME);
    session_.flush();
  }
  widget_.hide();
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
  xcb_window_t window = session_.focusWindow();
  if (window == previousFocus_) return true;
  // Some programs put the focus on a window inside their own as soon as they get it.
  for (int depth = 0; depth < kMaxDepth && window > XCB_INPUT_FOCUS_POINTER_ROOT && window != session_.root(); ++depth) {
    const auto tree = session_.reply(xcb_query_tree_reply, xcb_query_tree(session_.connection(), window));
    if (!tree) return false;
    window = tree->parent;
    if (window == previousFocus_) return window != session_.root();
  }
  return false;
}

bool X11PanelWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &widget_ && event->type() == QEvent::WindowDeactivate) resign();
  return QObject::eventFilter(watched, event);
}

void X11PanelWindow::handle(const xcb_generic_event_t& event) {
  if (!presented_ || eventType(event) != XCB_GE_GENERIC) return;
  const auto& generic = eventAs<xcb_ge_generic_event_t>(event);
  if (generic.extension != inputExtension_ || generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS) return;
  const auto& press = eventAs<xcb_input_raw_button_press_event_t>(event);
  // The click itself goes where it was meant; the panel only learns that it was not meant for it.
  if (isClick(press.detail) && !QGuiApplication::topLevelAt(QCursor::pos())) resign();
}

void X11PanelWindow::resign() {
  if (presented_ && !QApplication::activePopupWidget() && resignHandler_) resignHandler_();
}

}  // namespace nimbrel
