#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace nimbrel {

struct FreeDeleter {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply, event or error, which the library allocates with malloc.
template <typename Type>
using XcbPointer = std::unique_ptr<Type, FreeDeleter>;

struct XcbDisconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

/// The root window of the first screen.
[[nodiscard]] inline xcb_window_t rootWindow(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

/// An event's type without the bit that marks events sent by other clients.
[[nodiscard]] inline int eventType(const xcb_generic_event_t& event) {
  return event.response_type & 0x7f;
}

template <typename Event>
[[nodiscard]] const Event& eventAs(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

/// Sends an event to a window's owner. On the wire every event has 32 bytes; some are shorter in memory.
template <typename Event>
void sendEvent(xcb_connection_t* connection, xcb_window_t window, const Event& event) {
  static_assert(sizeof(Event) <= 32);
  std::array<char, 32> wire{};
  std::memcpy(wire.data(), &event, sizeof event);
  xcb_send_event(connection, 0, window, XCB_EVENT_MASK_NO_EVENT, wire.data());
}

/// Answers a request for a selection: the value is at `property`, or nowhere.
inline void sendSelectionNotify(xcb_connection_t* connection, const xcb_selection_request_event_t& request,
                                xcb_atom_t property) {
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = property;
  sendEvent(connection, request.requestor, notify);
}

}  // namespace nimbrel
