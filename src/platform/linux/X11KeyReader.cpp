#include "platform/linux/X11KeyReader.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <QKeyEvent>
#include <memory>

#include "platform/HotKeyRegistrar.h"
#include "platform/linux/X11KeyCodes.h"
#include "platform/linux/X11Keyboard.h"

namespace nimbrel {
namespace {

struct Unref {
  void operator()(xkb_context* context) const { xkb_context_unref(context); }
  void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
};

/// The marks of the dead keys from XKB_KEY_dead_grave on, in the order of their symbols.
constexpr QStringView kDeadKeys = u"`´^~¯˘˙¨°˝ˇ¸˛";

/// Symbols of keys that only change what others do: the modifiers and locks of keysymdef.h, and those of
/// XKB's level and group shifts (ISO 9995).
bool isModifierSymbol(quint32 symbol) {
  return (symbol >= XKB_KEY_Shift_L && symbol <= XKB_KEY_Hyper_R) ||
         (symbol >= XKB_KEY_ISO_Lock && symbol <= XKB_KEY_ISO_Last_Group_Lock) ||
         symbol == XKB_KEY_Num_Lock || symbol == XKB_KEY_Scroll_Lock || symbol == XKB_KEY_Mode_switch ||
         symbol == XKB_KEY_ISO_Level5_Shift || symbol == XKB_KEY_Multi_key;
}

/// What a key of the server's keyboard gives in a layout; on the keypad that is a digit only with a lock.
QString charactersOf(X11Session& session, quint32 key, quint32 layout) {
  const std::unique_ptr<xkb_context, Unref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
  const int device = xkb_x11_get_core_keyboard_device_id(session.connection());
  if (!context || device < 0) return {};
  const std::unique_ptr<xkb_keymap, Unref> keymap(xkb_x11_keymap_new_from_device(
      context.get(), session.connection(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap) return {};
  for (xkb_level_index_t level = 0; level < 2; ++level) {
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap.get(), key, layout, level, &symbols);
    const QString characters = count == 1 ? characterOf(symbols[0]) : QString();
    if (!characters.isEmpty()) return characters;
  }
  return {};
}

quint32 carbonMask(quint32 state, const X11Modifiers& modifiers) {
  quint32 mask = 0;
  if (state & modifiers.super) mask |= hotKeyModifier::command;
  if (state & modifiers.shift) mask |= hotKeyModifier::shift;
  if (state & modifiers.alt) mask |= hotKeyModifier::option;
  if (state & modifiers.control) mask |= hotKeyModifier::control;
  return mask;
}

bool hasOtherModifiers(quint32 state, const X11Modifiers& modifiers) {
  constexpr quint32 kAllModifiers = 0xff;
  const quint32 known = modifiers.shift | modifiers.control | modifiers.alt | modifiers.super |
                        modifiers.numLock | quint32{XCB_MOD_MASK_LOCK};
  return (state & kAllModifiers & ~known) != 0;
}

}  // namespace

QString characterOf(quint32 keySymbol) {
  if (keySymbol >= XKB_KEY_dead_grave && keySymbol < XKB_KEY_dead_grave + quint32(kDeadKeys.size()))
    return kDeadKeys.mid(qsizetype(keySymbol - XKB_KEY_dead_grave), 1).toString();
  const char32_t character = xkb_keysym_to_utf32(keySymbol);
  if (character == 0 || !QChar::isPrint(character)) return {};
  return QString::fromUcs4(&character, 1);
}

std::optional<PressedKey> X11KeyReader::read(const QKeyEvent& event) const {
  if (!session_.isConnected()) return std::nullopt;
  const quint32 state = event.nativeModifiers();
  const X11Modifiers modifiers = X11Keyboard(session_).modifiers();
  // Wherever the user has put Escape, it is the way out.
  if (event.nativeVirtualKey() == XKB_KEY_Escape)
    return PressedKey{.keyCode = kEscapeKeyCode, .modifiers = carbonMask(state, modifiers), .characters = {}};
  if (isModifierSymbol(event.nativeVirtualKey())) return std::nullopt;
  // With a modifier that combinations do not know, AltGr for one, the key is another than without it.
  if (hasOtherModifiers(state, modifiers)) return PressedKey{};
  // The layout in use: bits 13 and 14 of the state (XKB protocol, section 2.2.2).
  const quint32 layout = (state >> 13) & 3U;
  return PressedKey{.keyCode = virtualKeyCode(event.nativeScanCode()),
                    .modifiers = carbonMask(state, modifiers),
                    .characters = charactersOf(session_, event.nativeScanCode(), layout)};
}

}  // namespace nimbrel
