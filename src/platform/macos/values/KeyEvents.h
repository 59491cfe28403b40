#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

#include "platform/KeyReader.h"

/// Keys as AppKit, Carbon and Core Graphics number them.
namespace nimbrel::macos {

/// NSEventTypeKeyDown, and its bit in an event mask (NSEventMaskKeyDown).
inline constexpr quint64 kKeyDownType = 10;
inline constexpr quint64 kKeyDownMask = 1ULL << kKeyDownType;

/// Virtual key codes by position on the ANSI layout (kVK_ANSI_V, kVK_Space).
inline constexpr quint16 kPasteKeyCode = 9;
inline constexpr quint16 kSpaceKeyCode = 49;

/// kCGEventFlagMaskCommand: the paste keystroke has this flag and no other.
inline constexpr quint64 kPasteFlags = 0x100000;
/// kCGEventSourceStateCombinedSessionState.
inline constexpr qint32 kPasteSourceState = 0;
/// kCGAnnotatedSessionEventTap.
inline constexpr quint32 kPasteTap = 2;

/// The bits of an event's modifier flags (NSEventModifierFlag…).
namespace eventFlag {
inline constexpr quint64 shift = 1ULL << 17;
inline constexpr quint64 control = 1ULL << 18;
inline constexpr quint64 option = 1ULL << 19;
inline constexpr quint64 command = 1ULL << 20;
}  // namespace eventFlag

/// The Carbon modifier mask of an event's flags; locks and the rest are left out.
[[nodiscard]] quint32 carbonModifiers(quint64 eventFlags);

/// The key of a press by what its event tells: its position, its flags, and what it gives without modifiers.
/// Nothing for a key that is a modifier or a lock.
[[nodiscard]] std::optional<PressedKey> pressedKey(quint32 keyCode, quint64 eventFlags,
                                                   const QString& characters);

/// Whether a press, by its event's type and position, closes the preview: the space bar or Escape.
[[nodiscard]] bool closesPreview(quint64 eventType, quint16 keyCode);

/// Whether it does so wherever it is typed: the space bar alone.
[[nodiscard]] bool closesPreviewAnywhere(quint64 eventType, quint16 keyCode);

}  // namespace nimbrel::macos
