#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

#include "app/hotkeys/HotKeyCombo.h"
#include "settings/model/IgnoredApp.h"
#include "settings/model/LockMode.h"

namespace nimbrel {

/// The stored forms of the settings that are no plain values: JSON in UTF-8. Decoding gives nothing for what
/// is no such value; keys that are not known are ignored.

/// An object with the keys "keyCode", "modifiers" (both unsigned 32 bits) and "keyLabel".
[[nodiscard]] QByteArray encoded(const HotKeyCombo& combo);

/// Refuses also what nobody can have recorded: modifiers that do not exist, and a key without Command, Option
/// or Control, which would be lost for typing in every program.
[[nodiscard]] std::optional<HotKeyCombo> decodedHotKeyCombo(const QByteArray& json);

/// An array of objects with the keys "bundleID" and "name".
[[nodiscard]] QByteArray encoded(const QList<IgnoredApp>& apps);
[[nodiscard]] std::optional<QList<IgnoredApp>> decodedIgnoredApps(const QByteArray& json);

/// The name under which a mode is stored.
[[nodiscard]] QString storedName(LockMode mode);

/// The mode that a stored name stands for today; nothing for an unknown one.
[[nodiscard]] std::optional<LockMode> lockModeNamed(const QString& name);

}  // namespace nimbrel
