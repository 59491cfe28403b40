#pragma once

#include <QtGlobal>
#include <optional>

namespace nimbrel {

/// The X key code at the position of a macOS virtual key code; nothing for keys that PC keyboards lack. X key
/// codes are the kernel's plus 8, and number positions, not letters.
[[nodiscard]] std::optional<quint8> x11KeyCode(quint32 virtualKeyCode);

/// The macOS virtual key code at the position of an X key code; nothing for keys that Apple keyboards lack.
[[nodiscard]] std::optional<quint32> virtualKeyCode(quint32 x11KeyCode);

}  // namespace nimbrel
