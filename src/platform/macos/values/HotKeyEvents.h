#pragma once

#include <QtGlobal>
#include <optional>

/// The Carbon event manager's names and numbers for system-wide hot keys.
namespace nimbrel::macos {

/// Four characters as Carbon packs them, the first in the highest byte.
[[nodiscard]] constexpr quint32 fourCharCode(const char (&code)[5]) {
  quint32 packed = 0;
  for (int i = 0; i < 4; ++i)
    packed = packed << 8 | static_cast<unsigned char>(code[i]);
  return packed;
}

/// The signature of the program's own hot keys.
inline constexpr quint32 kHotKeySignature = fourCharCode("CLIP");
/// kEventClassKeyboard and kEventHotKeyPressed.
inline constexpr quint32 kHotKeyEventClass = fourCharCode("keyb");
inline constexpr quint32 kHotKeyPressedKind = 5;
/// kEventParamDirectObject and typeEventHotKeyID, whose value has this many bytes.
inline constexpr quint32 kDirectObjectParameter = fourCharCode("----");
inline constexpr quint32 kHotKeyIdType = fourCharCode("hkid");
inline constexpr quint64 kHotKeyIdBytes = 8;

/// noErr.
inline constexpr qint32 kNoError = 0;
/// eventNotHandledErr: the event goes on to whoever else waits for it.
inline constexpr qint32 kEventNotHandled = -9874;

/// Whether a registration came off: no error, and something to undo it by.
[[nodiscard]] constexpr bool isRegistered(qint32 status, const void* reference) {
  return status == kNoError && reference != nullptr;
}

/// What became of an event that said that a hot key was pressed.
struct HotKeyPress final {
  /// For Carbon.
  qint32 status = kNoError;
  /// The hot key; nothing when it is none of the program's.
  std::optional<quint32> id;
};

/// By how the reading of its identifier ended, and what was read.
[[nodiscard]] constexpr HotKeyPress hotKeyPress(qint32 readStatus, quint32 signature, quint32 id) {
  if (readStatus != kNoError) return {readStatus, std::nullopt};
  if (signature != kHotKeySignature) return {kEventNotHandled, std::nullopt};
  return {kNoError, id};
}

}  // namespace nimbrel::macos
