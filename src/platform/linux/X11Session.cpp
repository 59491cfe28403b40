#include "platform/linux/X11Session.h"

#include <xcb/xinput.h>

#include <QAbstractEventDispatcher>

#include "platform/linux/Xkb.h"

namespace nimbrel {

X11Session::X11Session(const QByteArray& display)
    : connection_(xcb_connect(display.isEmpty() ? nullptr : display.constData(), nullptr)),
      connected_(!xcb_connection_has_error(connection_.get())),
      atoms_(connection_.get()) {
  if (!connected_) return;
  root_ = rootWindow(connection_.get());
  notifier_ =
      std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { deliver(); });
  // Waiting for a reply or sending can read events into the library's queue, where the socket does not show
  // them.
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          [this] { deliver(); });
  // Hot keys and the reading of keys speak of the keyboard in the extension's terms.
  static_cast<void>(reply(xcb_xkb_use_extension_reply,
                          xcb_xkb_use_extension(connection(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION)));
  const auto* const extension = xcb_get_extension_data(connection(), &xcb_input_id);
  if (!extension || !extension->present) return;
  inputExtension_ = extension->major_opcode;
  static_cast<void>(reply(xcb_input_xi_query_version_reply, xcb_input_xi_query_version(connection(), 2, 2)));
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
  return !error;
}

xcb_window_t X11Session::parentOf(xcb_window_t window) {
  const auto tree = reply(xcb_query_tree_reply, xcb_query_tree(connection(), window));
  return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t X11Session::focusWindow() {
  const auto answer = reply(xcb_get_input_focus_reply, xcb_get_input_focus(connection_.get()));
  return answer ? answer->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void X11Session::deliver() {
  while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())})
    distribute(*event);
  if (notifier_ && xcb_connection_has_error(connection_.get())) notifier_->setEnabled(false);
}

void X11Session::distribute(const xcb_generic_event_t& event) {
  // A copy: a handler may bring about the end of another.
  const auto handlers = handlers_;
  for (const Handler& handler : handlers)
    handler.handle(event);
}

void X11Session::watchRawEvents(std::uint32_t mask, bool watch) {
  const std::uint32_t wanted = watch ? rawMask_ | mask : rawMask_ & ~mask;
  if (inputExtension_ < 0 || std::exchange(rawMask_, wanted) == wanted) return;
  const struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, wanted};
  xcb_input_xi_select_events(connection(), root_, 1, &selection.head);
  flush();
}

int X11Session::rawEventType(const xcb_generic_event_t& event) const {
  if (eventType(event) != XCB_GE_GENERIC) return 0;
  const auto& generic = eventAs<xcb_ge_generic_event_t>(event);
  return generic.extension == inputExtension_ ? generic.event_type : 0;
}

}  // namespace nimbrel
