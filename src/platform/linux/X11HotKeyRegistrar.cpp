#include "platform/linux/X11HotKeyRegistrar.h"

// The header has fields named like a C++ keyword.
#define explicit explicitModifiers
#include <xcb/xkb.h>
#undef explicit
#include <xcb/xinput.h>

#include <algorithm>

#include "platform/linux/X11KeyCodes.h"

namespace nimbrel {
namespace {

// The Carbon modifier mask.
constexpr quint32 kCommand = 256;
constexpr quint32 kShift = 512;
constexpr quint32 kOption = 2048;
constexpr quint32 kControl = 4096;

std::uint16_t x11Mask(quint32 carbon, const X11Modifiers& modifiers) {
  unsigned mask = 0;
  if (carbon & kCommand) mask |= modifiers.super;
  if (carbon & kShift) mask |= modifiers.shift;
  if (carbon & kOption) mask |= modifiers.alt;
  if (carbon & kControl) mask |= modifiers.control;
  return static_cast<std::uint16_t>(mask);
}

/// With detectable auto-repeat, a key that is held down sends presses only, and one release at its end.
void askForDetectableRepeat(X11Session& session) {
  static_cast<void>(session.reply(
      xcb_xkb_use_extension_reply,
      xcb_xkb_use_extension(session.connection(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION)));
  constexpr std::uint32_t kDetectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  static_cast<void>(session.reply(xcb_xkb_per_client_flags_reply,
                                  xcb_xkb_per_client_flags(session.connection(), XCB_XKB_ID_USE_CORE_KBD,
                                                           kDetectable, kDetectable, 0, 0, 0)));
}

}  // namespace

X11HotKeyRegistrar::X11HotKeyRegistrar(X11Session& session) : session_(session) {
  if (!session_.isConnected()) return;
  modifiers_ = X11Keyboard(session_).modifiers();
  askForDetectableRepeat(session_);
  session_.addEventHandler(this, [this](const xcb_generic_event_t& event) { handle(event); });
}

X11HotKeyRegistrar::~X11HotKeyRegistrar() {
  for (const Grab& grab : std::as_const(grabs_))
    release(grab);
  if (session_.isConnected()) session_.flush();
}

QList<std::uint16_t> X11HotKeyRegistrar::lockStates() const {
  const auto caps = static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK);
  return {0, caps, modifiers_.numLock, static_cast<std::uint16_t>(caps | modifiers_.numLock)};
}

bool X11HotKeyRegistrar::registerHotKey(quint32 id, quint32 keyCode, quint32 modifiers) {
  const auto key = x11KeyCode(keyCode);
  if (!session_.isConnected() || !key || grabs_.contains(id)) return false;
  const Grab grab{*key, x11Mask(modifiers, modifiers_)};
  // The server lets one client grab a key twice, and release it twice with one call.
  const bool isHeld =
      std::any_of(grabs_.cbegin(), grabs_.cend(), [&](const Grab& other) { return other == grab; });
  if (isHeld) return false;
  QList<xcb_void_cookie_t> cookies;
  for (const std::uint16_t locks : lockStates()) {
    cookies.append(xcb_grab_key_checked(session_.connection(), 0, session_.root(),
                                        static_cast<std::uint16_t>(grab.modifiers | locks), grab.key,
                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  }
  // Every answer must be taken, whatever the first one says.
  const auto refused = std::count_if(cookies.begin(), cookies.end(), [this](xcb_void_cookie_t cookie) {
    return !session_.succeeded(cookie);
  });
  if (refused > 0) {
    release(grab);
    session_.flush();
    return false;
  }
  grabs_.insert(id, grab);
  return true;
}

void X11HotKeyRegistrar::unregisterHotKey(quint32 id) {
  const auto found = grabs_.constFind(id);
  if (found == grabs_.constEnd()) return;
  release(*found);
  grabs_.erase(found);
  session_.flush();
}

void X11HotKeyRegistrar::release(const Grab& grab) {
  for (const std::uint16_t locks : lockStates())
    xcb_ungrab_key(session_.connection(), grab.key, session_.root(),
                   static_cast<std::uint16_t>(grab.modifiers | locks));
}

void X11HotKeyRegistrar::forget(xcb_keycode_t released) {
  if (released != held_) return;
  held_ = 0;
  session_.watchRawEvents(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE, false);
}

void X11HotKeyRegistrar::handle(const xcb_generic_event_t& event) {
  // The release of a hot key may go to another program, when the keyboard has changed hands meanwhile.
  if (session_.rawEventType(event) == XCB_INPUT_RAW_KEY_RELEASE)
    return forget(static_cast<xcb_keycode_t>(eventAs<xcb_input_raw_key_release_event_t>(event).detail));
  const int type = eventType(event);
  if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) return;
  const auto& key = eventAs<xcb_key_press_event_t>(event);
  if (type == XCB_KEY_RELEASE) return forget(key.detail);
  if (std::exchange(held_, key.detail) == key.detail) return;
  session_.watchRawEvents(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE, true);
  const unsigned meant = modifiers_.shift | modifiers_.control | modifiers_.alt | modifiers_.super;
  for (auto it = grabs_.constBegin(); it != grabs_.constEnd(); ++it) {
    if (it->key == key.detail && it->modifiers == (key.state & meant)) {
      const quint32 id = it.key();
      if (handler_) handler_(id);
      return;
    }
  }
}

}  // namespace nimbrel
