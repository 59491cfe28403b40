#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace nimbrel {

/// A combination as `HotKeyRegistrar` takes it.
struct HotKeyProbe final {
  quint32 keyCode = 0;
  quint32 modifiers = 0;
};

/// What this desktop has of what the program works with.
struct DesktopFacts final {
  /// What kind of desktop it is, for what can be done about it.
  enum class Kind { x11, mac };

  Kind kind = Kind::x11;
  bool hasDisplay = false;
  /// Programs that do not speak the display's language cannot be seen or pasted into: Wayland's, beside X11.
  bool hasForeignWindows = false;
  bool canPressKeys = false;
  bool hasTray = false;
  bool hasSessionBus = false;
  /// Whether the system knows what the user is to be asked for a proof for.
  bool hasLockAction = false;
  /// Of the combinations asked for, in their order: whether somebody else holds them.
  QList<bool> takenHotKeys;
  /// Whether the helper that looks at images is there, and the languages that it can read.
  bool hasImageHelper = false;
  QStringList recognitionLanguages;
};

}  // namespace nimbrel
