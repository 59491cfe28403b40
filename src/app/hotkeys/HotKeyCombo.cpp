#include "app/hotkeys/HotKeyCombo.h"

#include <QCoreApplication>
#include <array>

#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(HotKeyCombo)
};

constexpr quint32 kSpaceKeyCode = 49;

struct KeyName {
  quint32 keyCode;
  QStringView name;
};

// Keys that are known by a name or a sign (HIToolbox, kVK_…).
constexpr std::array kKeyNames{
    KeyName{kSpaceKeyCode, u"Espacio"},
    KeyName{48, u"⇥"},
    KeyName{123, u"←"},
    KeyName{124, u"→"},
    KeyName{126, u"↑"},
    KeyName{125, u"↓"},
    KeyName{122, u"F1"},
    KeyName{120, u"F2"},
    KeyName{99, u"F3"},
    KeyName{118, u"F4"},
    KeyName{96, u"F5"},
    KeyName{97, u"F6"},
    KeyName{98, u"F7"},
    KeyName{100, u"F8"},
    KeyName{101, u"F9"},
    KeyName{109, u"F10"},
    KeyName{103, u"F11"},
    KeyName{111, u"F12"},
};

std::optional<QString> nameOf(quint32 keyCode) {
  for (const KeyName& key : kKeyNames) {
    if (key.keyCode == keyCode) return key.name.toString();
  }
  return std::nullopt;
}

/// The one character that a key is known by: no control character, no space, and none of those behind which
/// Apple's systems hide their function keys.
std::optional<QString> labelOf(const QString& characters) {
  constexpr uint kFirst = 33;
  constexpr uint kFirstFunctionKey = 0xf700;
  const QString label = characters.toUpper();
  if (characterCount(label) != 1) return std::nullopt;
  const uint scalar = label.toUcs4().first();
  return scalar >= kFirst && scalar < kFirstFunctionKey ? std::optional(label) : std::nullopt;
}

}  // namespace

std::optional<HotKeyCombo> recordedCombo(const PressedKey& key) {
  if (!key.keyCode || !isHotKeyMask(key.modifiers)) return std::nullopt;
  const auto name = nameOf(*key.keyCode);
  const auto label = name ? name : labelOf(key.characters);
  if (!label) return std::nullopt;
  return HotKeyCombo{
      .keyCode = *key.keyCode, .modifiers = key.modifiers & hotKeyModifier::all, .keyLabel = *label};
}

QString HotKeyCombo::displayString() const {
  QString text;
  if (modifiers & hotKeyModifier::control) text += u'⌃';
  if (modifiers & hotKeyModifier::option) text += u'⌥';
  if (modifiers & hotKeyModifier::shift) text += u'⇧';
  if (modifiers & hotKeyModifier::command) text += u'⌘';
  return text + (keyCode == kSpaceKeyCode ? Texts::tr("Espacio") : keyLabel);
}

QString HotKeyCombo::spokenString() const {
  QStringList words;
  if (modifiers & hotKeyModifier::control) words.append(Texts::tr("Control"));
  if (modifiers & hotKeyModifier::option) words.append(Texts::tr("Opción"));
  if (modifiers & hotKeyModifier::shift) words.append(Texts::tr("Mayúsculas"));
  if (modifiers & hotKeyModifier::command) words.append(Texts::tr("Comando"));
  words.append(keyCode == kSpaceKeyCode ? Texts::tr("Espacio") : keyLabel);
  return words.join(u' ');
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
