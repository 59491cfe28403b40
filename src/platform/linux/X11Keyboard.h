#pragma once

#include <QList>
#include <cstdint>
#include <optional>

#include "platform/linux/X11Session.h"

namespace nimbrel {

/// Which modifier bits and key codes this keyboard has for what the program means by them.
struct X11Modifiers final {
  std::uint16_t shift = XCB_MOD_MASK_SHIFT;
  std::uint16_t control = XCB_MOD_MASK_CONTROL;
  /// Option and Command of the hot-key combinations.
  std::uint16_t alt = XCB_MOD_MASK_1;
  std::uint16_t super = XCB_MOD_MASK_4;
  std::uint16_t numLock = XCB_MOD_MASK_2;
  /// Every key that is a modifier while it is down; pressing the locks would switch them.
  QList<xcb_keycode_t> keys;

  bool operator==(const X11Modifiers&) const = default;
};

/// Looks at the keyboard as it is mapped now. Main thread.
class X11Keyboard final {
 public:
  /// The session must outlive this.
  explicit X11Keyboard(X11Session& session) : session_(session) {}

  [[nodiscard]] X11Modifiers modifiers();

  /// The key that gives a symbol without modifiers in the layout in use, else in any other; nothing when none
  /// does.
  [[nodiscard]] std::optional<xcb_keycode_t> keyFor(xcb_keysym_t symbol);

  [[nodiscard]] bool isDown(xcb_keycode_t key);

  /// The modifier keys that are down now.
  [[nodiscard]] QList<xcb_keycode_t> heldModifiers();

 private:
  X11Session& session_;
};

}  // namespace nimbrel
