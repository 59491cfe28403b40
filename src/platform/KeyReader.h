#pragma once

#include <QString>
#include <optional>

class QKeyEvent;

namespace nimbrel {

/// The virtual key code of Escape.
inline constexpr quint32 kEscapeKeyCode = 53;

/// A key that was pressed, in the terms of `HotKeyCombo`.
struct PressedKey final {
  /// The virtual key code of its position; nothing for a key that has none.
  std::optional<quint32> keyCode;
  /// The Carbon modifier mask of what is held besides.
  quint32 modifiers = 0;
  /// What the key gives without modifiers in the layout in use, empty when that is no character.
  QString characters;

  bool operator==(const PressedKey&) const = default;
};

/// Looks behind the toolkit's key events. Main thread.
class KeyReader {
 public:
  virtual ~KeyReader() = default;

  /// The key of a press; nothing for one that is only a modifier or a lock.
  [[nodiscard]] virtual std::optional<PressedKey> read(const QKeyEvent& event) const = 0;
};

}  // namespace nimbrel
