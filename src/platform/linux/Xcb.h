#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
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

}  // namespace nimbrel
