#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

#include "platform/HotKeyRegistrar.h"
#include "platform/KeyReader.h"

namespace nimbrel {

/// Whether these modifiers make a key a combination: Shift alone does not, which only types something else.
[[nodiscard]] constexpr bool isHotKeyMask(quint32 modifiers) {
  return (modifiers & (hotKeyModifier::command | hotKeyModifier::option | hotKeyModifier::control)) != 0;
}

/// A key combination: a layout-independent virtual key code (9 is the position of V on an ANSI keyboard), the
/// Carbon modifier mask, and the label shown for the key.
struct HotKeyCombo final {
  quint32 keyCode = 0;
  quint32 modifiers = 0;
  QString keyLabel;

  /// The modifiers' glyphs in the order ⌃⌥⇧⌘, then the key: "⇧⌘V". The space bar shows as its localised name.
  [[nodiscard]] QString displayString() const;

  /// The same in words, as a screen reader says it: "Mayúsculas Comando V".
  [[nodiscard]] QString spokenString() const;

  bool operator==(const HotKeyCombo&) const = default;
};

/// The combination that somebody recorded by pressing a key, labelled as it is printed on the keyboard in
/// use; nothing without Command, Option or Control, or for a key that no label says.
[[nodiscard]] std::optional<HotKeyCombo> recordedCombo(const PressedKey& key);

/// Shift-Command-V, which opens the panel.
[[nodiscard]] HotKeyCombo defaultHotKey();

/// Shift-Command-N, which pastes the next clip of the queue.
[[nodiscard]] HotKeyCombo defaultNextHotKey();

}  // namespace nimbrel
