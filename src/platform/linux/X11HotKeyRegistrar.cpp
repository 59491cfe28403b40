#include "platform/linux/X11HotKeyRegistrar.h"

#include <xcb/xinput.h>

#include <QLoggingCategory>
#include <algorithm>

#include "platform/linux/X11KeyCodes.h"
#include "platform/linux/Xkb.h"

namespace nimbrel {
namespace {

Q_LOGGING_CATEGORY(hotKeyLog, "clipboard")

std::uint16_t x11Mask(quint32 carbon, const X11Modifiers& modifiers) {
  unsigned mask = 0;
  if (carbon & hotKeyModifier::command) mask |= modifiers.super;
  if (carbon & hotKeyModifier::shift) mask |= modifiers.shift;
  if (carbon & hotKeyModifier::option) mask |= modifiers.alt;
  if (carbon & hotKeyModifier::control) mask |= modifiers.control;
  return static_cast<std::uint16_t>(mask);
}

/// With detectable auto-repeat, a key that is held down sends presses only, and one release at its end.
void askForDetectableRepeat(X11Session& session) {
  constexpr std::uint32_t kDetectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  static_cast<void>(session.reply(xcb_xkb_per_client_flags_reply,
                                  xcb_xkb_per_client_flags(session.connection(), XCB_XKB_ID_USE_CORE_KBD,
                                                           kDetectable, kDetectable, 0, 0, 0)));
}

/// A client of the keyboard extension hears of changes of the keyboard only by its events.
void askForKeyboardChanges(X11Session& session) {
  constexpr std::uint16_t kChanges = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  constexpr std::uint16_t kAllParts = 0xff;
  xcb_xkb_select_events(session.connection(), XCB_XKB_ID_USE_CORE_KBD, kChanges, 0, kChanges, kAllParts,
                        kAllParts, nullptr);
}

bool isKeyboardChange(X11Session& session, const xcb_generic_event_t& event) {
  const auto* const extension = xcb_get_extension_data(session.connection(), &xcb_xkb_id);
  if (!extension || !extension->present || eventType(event) != extension->first_event) return false;
  // All events of this extension have one type, and the kind where others have their detail.
  const int kind = event.pad0;
  return kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY;
}

}  // namespace

X11HotKeyRegistrar::X11HotKeyRegistrar(X11Session& session) : session_(session) {
  if (!session_.isConnected()) return;
  modifiers_ = X11Keyboard(session_).modifiers();
  askForDetectableRepeat(session_);
  askForKeyboardChanges(session_);
  session_.flush();
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
  const Grab grab{*key, x11Mask(modifiers, modifiers_), modifiers};
  // The server lets one client grab a key twice, and release it twice with one call.
  const bool isHeld =
      std::any_of(grabs_.cbegin(), grabs_.cend(), [&](const Grab& other) { return other == grab; });
  if (isHeld || !take(grab)) return false;
  grabs_.insert(id, grab);
  // Whoever has just recorded the combination may still hold it down; its repetitions are no presses. Its
  // release must not slip through between looking and watching.
  if (held_ == 0) {
    hold(grab.key);
    if (!X11Keyboard(session_).isDown(grab.key)) forget(grab.key);
  }
  return true;
}

bool X11HotKeyRegistrar::take(const Grab& grab) {
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
  if (refused == 0) return true;
  release(grab);
  session_.flush();
  return false;
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

void X11HotKeyRegistrar::hold(xcb_keycode_t key) {
  held_ = key;
  session_.watchRawEvents(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE, true);
}

void X11HotKeyRegistrar::followKeyboardSoon() {
  // One change of the layout is told in many events.
  if (std::exchange(followsSoon_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { followKeyboard(); }, Qt::QueuedConnection);
}

void X11HotKeyRegistrar::followKeyboard() {
  followsSoon_ = false;
  const X11Modifiers found = X11Keyboard(session_).modifiers();
  if (found == modifiers_) return;
  for (const Grab& grab : std::as_const(grabs_))
    release(grab);
  modifiers_ = found;
  for (Grab& grab : grabs_) {
    grab.modifiers = x11Mask(grab.carbonModifiers, modifiers_);
    if (!take(grab)) qCWarning(hotKeyLog, "Un atajo no se pudo registrar con el nuevo teclado");
  }
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
  if (isKeyboardChange(session_, event)) return followKeyboardSoon();
  const int type = eventType(event);
  if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) return;
  const auto& key = eventAs<xcb_key_press_event_t>(event);
  if (type == XCB_KEY_RELEASE) return forget(key.detail);
  if (held_ == key.detail) return;
  hold(key.detail);
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
