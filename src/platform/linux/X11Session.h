#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/linux/AtomTable.h"
#include "platform/linux/Xcb.h"

namespace nimbrel {

/// The main thread's own X connection, beside Qt's, for hot keys, focus and keystrokes. Asks the X server
/// only, never another client.
class X11Session final : public QObject {
 public:
  using EventHandler = std::function<void(const xcb_generic_event_t&)>;

  /// `display` as in the DISPLAY variable, or empty for that variable's own value.
  explicit X11Session(const QByteArray& display = {});
  ~X11Session() override;

  [[nodiscard]] bool isConnected() const { return connected_; }
  [[nodiscard]] xcb_connection_t* connection() const { return connection_.get(); }
  [[nodiscard]] xcb_window_t root() const { return root_; }
  [[nodiscard]] AtomTable& atoms() { return atoms_; }

  /// Events go to every handler, in the order of their coming; `owner` ends the handler's life with its own.
  void addEventHandler(QObject* owner, EventHandler handler);

  /// Gives every handler an event that came to the program by another connection.
  void distribute(const xcb_generic_event_t& event);

  /// Asks for raw input events (XInput 2) of a kind, or for no more of them; they come whoever has the
  /// keyboard or the pointer. `rawEventType` tells which kind an event is of, 0 for all others.
  void watchRawEvents(std::uint32_t mask, bool watch);
  [[nodiscard]] int rawEventType(const xcb_generic_event_t& event) const;

  /// Takes the reply that `fetch` gets from the connection.
  template <typename Reply, typename Cookie>
  XcbPointer<Reply> reply(Reply* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**), Cookie cookie) {
    xcb_generic_error_t* error = nullptr;
    XcbPointer<Reply> taken(fetch(connection_.get(), cookie, &error));
    const XcbPointer<xcb_generic_error_t> owned(error);
    return taken;
  }

  /// Waits for the X server to say whether a checked request succeeded.
  [[nodiscard]] bool succeeded(xcb_void_cookie_t cookie);

  /// The window that has the keyboard.
  [[nodiscard]] xcb_window_t focusWindow();

  /// The window that a window stands in; none when that is not there any more.
  [[nodiscard]] xcb_window_t parentOf(xcb_window_t window);

  void flush() { xcb_flush(connection_.get()); }

 private:
  struct Handler {
    QObject* owner;
    EventHandler handle;
  };

  void deliver();

  XcbConnection connection_;
  bool connected_;
  xcb_window_t root_ = XCB_WINDOW_NONE;
  AtomTable atoms_;
  std::vector<Handler> handlers_;
  std::unique_ptr<QSocketNotifier> notifier_;
  /// The extension's opcode, −1 without it.
  int inputExtension_ = -1;
  std::uint32_t rawMask_ = 0;
};

}  // namespace nimbrel
