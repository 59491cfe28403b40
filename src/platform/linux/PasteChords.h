#pragma once

#include <QString>

namespace nimbrel {

/// The keys that paste, and where from.
enum class PasteChord {
  /// Control-V pastes the clipboard.
  controlV,
  /// Control-Shift-V pastes the clipboard, because Control-V belongs to the program inside the terminal.
  controlShiftV,
  /// Shift-Insert pastes the PRIMARY selection.
  shiftInsertPrimary,
};

/// The paste command of an application, by its identifier (desktop-file id or window class, in any letter
/// case).
[[nodiscard]] PasteChord pasteChordOf(const QString& applicationIdentifier);

}  // namespace nimbrel
