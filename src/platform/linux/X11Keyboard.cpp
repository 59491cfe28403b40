#include "platform/linux/X11Keyboard.h"

#include <algorithm>
#include <vector>

namespace nimbrel {
namespace {

// Key symbols of keysymdef.h.
constexpr xcb_keysym_t kNumLock = 0xff7f;
constexpr xcb_keysym_t kAltLeft = 0xffe9;
constexpr xcb_keysym_t kSuperLeft = 0xffeb;

/// The symbols of every key: row `key - first`, `perKey` columns; columns 0 and 1 are the first layout's
/// levels, 2 and 3 the second's.
struct KeyMap {
  xcb_keycode_t first = 0;
  int perKey = 0;
  std::vector<xcb_keysym_t> symbols;

  [[nodiscard]] bool has(xcb_keycode_t key, xcb_keysym_t symbol) const {
    const auto begin = symbols.begin() + std::ptrdiff_t{key - first} * perKey;
    return key >= first && std::find(begin, begin + perKey, symbol) != begin + perKey;
  }
  [[nodiscard]] std::optional<xcb_keycode_t> keyWith(xcb_keysym_t symbol, int column) const {
    if (column >= perKey) return std::nullopt;
    for (std::size_t row = 0; (row + 1) * static_cast<std::size_t>(perKey) <= symbols.size(); ++row) {
      if (symbols[row * static_cast<std::size_t>(perKey) + static_cast<std::size_t>(column)] == symbol)
        return static_cast<xcb_keycode_t>(first + row);
    }
    return std::nullopt;
  }
};

KeyMap readKeyMap(X11Session& session) {
  const auto* const setup = xcb_get_setup(session.connection());
  KeyMap map;
  map.first = setup->min_keycode;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto reply = session.reply(xcb_get_keyboard_mapping_reply,
                                   xcb_get_keyboard_mapping(session.connection(), setup->min_keycode, count));
  if (!reply) return map;
  const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
  map.perKey = reply->keysyms_per_keycode;
  map.symbols.assign(symbols, symbols + xcb_get_keyboard_mapping_keysyms_length(reply.get()));
  return map;
}

/// The layout in use: bits 13 and 14 of the state (XKB protocol, section 2.2.2).
int currentGroup(X11Session& session) {
  const auto reply =
      session.reply(xcb_query_pointer_reply, xcb_query_pointer(session.connection(), session.root()));
  return reply ? (reply->mask >> 13) & 3 : 0;
}

bool isDownIn(const xcb_query_keymap_reply_t& keys, xcb_keycode_t key) {
  return (keys.keys[key / 8] & (1U << (key % 8))) != 0;
}

}  // namespace

X11Modifiers X11Keyboard::modifiers() {
  X11Modifiers found;
  const auto reply =
      session_.reply(xcb_get_modifier_mapping_reply, xcb_get_modifier_mapping(session_.connection()));
  const KeyMap map = readKeyMap(session_);
  if (!reply || map.symbols.empty()) return found;
  const xcb_keycode_t* const keys = xcb_get_modifier_mapping_keycodes(reply.get());
  const int perModifier = reply->keycodes_per_modifier;
  for (int i = 0; i < 8 * perModifier; ++i) {
    const xcb_keycode_t key = keys[i];
    if (key == 0) continue;
    const auto bit = static_cast<std::uint16_t>(1U << (i / perModifier));
    if (map.has(key, kNumLock)) found.numLock = bit;
    if (map.has(key, kAltLeft)) found.alt = bit;
    if (map.has(key, kSuperLeft)) found.super = bit;
    const bool isLock = bit == XCB_MOD_MASK_LOCK || map.has(key, kNumLock);
    if (!isLock && !found.keys.contains(key)) found.keys.append(key);
  }
  return found;
}

std::optional<xcb_keycode_t> X11Keyboard::keyFor(xcb_keysym_t symbol) {
  const KeyMap map = readKeyMap(session_);
  if (const auto key = map.keyWith(symbol, currentGroup(session_) * 2)) return key;
  for (int column = 0; column < map.perKey; column += 2) {
    if (const auto key = map.keyWith(symbol, column)) return key;
  }
  return std::nullopt;
}

bool X11Keyboard::isDown(xcb_keycode_t key) {
  const auto reply = session_.reply(xcb_query_keymap_reply, xcb_query_keymap(session_.connection()));
  return reply && isDownIn(*reply, key);
}

QList<xcb_keycode_t> X11Keyboard::heldModifiers() {
  QList<xcb_keycode_t> held;
  const QList<xcb_keycode_t> keys = modifiers().keys;
  // Last of all: what the user lets go of after this is pressed again by mistake.
  const auto reply = session_.reply(xcb_query_keymap_reply, xcb_query_keymap(session_.connection()));
  if (!reply) return held;
  for (const xcb_keycode_t key : keys) {
    if (isDownIn(*reply, key)) held.append(key);
  }
  return held;
}

}  // namespace nimbrel
