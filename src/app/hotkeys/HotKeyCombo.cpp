#include "app/hotkeys/HotKeyCombo.h"

#include <QCoreApplication>

namespace nimbrel {
namespace {

constexpr quint32 kSpaceKeyCode = 49;

}  // namespace

QString HotKeyCombo::displayString() const {
  QString text;
  if (modifiers & hotKeyModifier::control) text += u'⌃';
  if (modifiers & hotKeyModifier::option) text += u'⌥';
  if (modifiers & hotKeyModifier::shift) text += u'⇧';
  if (modifiers & hotKeyModifier::command) text += u'⌘';
  return text + (keyCode == kSpaceKeyCode ? QCoreApplication::translate("HotKeyCombo", "Espacio") : keyLabel);
}

HotKeyCombo defaultHotKey() {
  return {.keyCode = 9,
          .modifiers = hotKeyModifier::command | hotKeyModifier::shift,
          .keyLabel = QStringLiteral("V")};
}

HotKeyCombo defaultNextHotKey() {
  return {.keyCode = 45,
          .modifiers = hotKeyModifier::command | hotKeyModifier::shift,
          .keyLabel = QStringLiteral("N")};
}

}  // namespace nimbrel
