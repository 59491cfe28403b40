#include "platform/macos/values/KeyEvents.h"

#include "platform/HotKeyRegistrar.h"

namespace nimbrel::macos {
namespace {

/// From the right Command key (54) to the function key (63), kVK_RightCommand to kVK_Function.
constexpr quint32 kFirstModifierKey = 54;
constexpr quint32 kLastModifierKey = 63;

}  // namespace

quint32 carbonModifiers(quint64 eventFlags) {
  quint32 mask = 0;
  if (eventFlags & eventFlag::command) mask |= hotKeyModifier::command;
  if (eventFlags & eventFlag::shift) mask |= hotKeyModifier::shift;
  if (eventFlags & eventFlag::option) mask |= hotKeyModifier::option;
  if (eventFlags & eventFlag::control) mask |= hotKeyModifier::control;
  return mask;
}

std::optional<PressedKey> pressedKey(quint32 keyCode, quint64 eventFlags, const QString& characters) {
  if (keyCode >= kFirstModifierKey && keyCode <= kLastModifierKey) return std::nullopt;
  return PressedKey{.keyCode = keyCode, .modifiers = carbonModifiers(eventFlags), .characters = characters};
}

bool closesPreview(quint64 eventType, quint16 keyCode) {
  return eventType == kKeyDownType && (keyCode == kSpaceKeyCode || keyCode == kEscapeKeyCode);
}

bool closesPreviewAnywhere(quint64 eventType, quint16 keyCode) {
  return eventType == kKeyDownType && keyCode == kSpaceKeyCode;
}

}  // namespace nimbrel::macos
