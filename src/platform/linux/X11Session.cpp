#include "platform/linux/X11Session.h"

namespace nimbrel {

X11Session::X11Session(const QByteArray& display)
    : connection_(xcb_connect(display.isEmpty() ? nullptr : display.constData(), nullptr)),
      connected_(!xcb_connection_has_error(connection_.get())),
      atoms_(connection_.get()) {
  if (!connected_) return;
  root_ = rootWindow(connection_.get());
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { deliver(); });
}

X11Session::~X11Session() = default;

void X11Session::addEventHandler(QObject* owner, EventHandler handler) {
  handlers_.push_back({owner, std::move(handler)});
  connect(owner, &QObject::destroyed, this, [this, owner] {
    std::erase_if(handlers_, [owner](const Handler& candidate) { return candidate.owner == owner; });
  });
}

bool X11Session::succeeded(xcb_void_cookie_t cookie) {
  const XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection_.get(), cookie));
  deliverSoon();
  return !error;
}

xcb_window_t X11Session::focusWindow() {
  const auto answer = reply(xcb_get_input_focus_reply, xcb_get_input_focus(connection_.get()));
  return answer ? answer->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void X11Session::deliver() {
  deliveryQueued_ = false;
  while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())})
    distribute(*event);
  if (xcb_connection_has_error(connection_.get())) notifier_->setEnabled(false);
}

void X11Session::distribute(const xcb_generic_event_t& event) {
  // A copy: a handler may bring about the end of another.
  const auto handlers = handlers_;
  for (const Handler& handler : handlers)
    handler.handle(event);
}

void X11Session::deliverSoon() {
  if (std::exchange(deliveryQueued_, true)) return;
  QMetaObject::invokeMethod(this, [this] { deliver(); }, Qt::QueuedConnection);
}

}  // namespace nimbrel
