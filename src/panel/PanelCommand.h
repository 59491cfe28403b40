#pragma once

#include <QKeyEvent>
#include <optional>

#include "platform/KeyReader.h"

namespace nimbrel {

/// What a key does in the panel.
struct PanelCommand final {
  enum class Kind {
    selectPrevious,
    selectNext,
    selectPageUp,
    selectPageDown,
    selectFirst,
    selectLast,
    paste,
    pastePlain,
    /// The clip in row `row`.
    pasteRow,
    pasteRecognizedText,
    openLink,
    remove,
    undoRemoval,
    togglePin,
    toggleQueue,
    chooseCollection,
    preview,
    nextKind,
    previousKind,
    showMenu,
    openSettings,
    dismiss,
  };

  Kind kind;
  int row = 0;

  /// Whether it goes on to another row or kind, and further while its key is held down.
  [[nodiscard]] bool movesOn() const;
  /// Whether it means one of the rows that are shown.
  [[nodiscard]] bool concernsRows() const;

  bool operator==(const PanelCommand&) const = default;
};

/// Where the panel stands when a key comes.
struct PanelKeyState final {
  /// With a query, keys that could be meant for it are.
  bool hasQuery = false;
  /// Whether a deletion can be undone.
  bool canUndo = false;
};

/// The command of a key; nothing for one that is meant for the search field. The digits are those that the
/// keys write or, where they need Shift for that, those that stand on the keys.
[[nodiscard]] std::optional<PanelCommand> panelCommand(const QKeyEvent& event, const KeyReader& keys,
                                                       const PanelKeyState& state);

}  // namespace nimbrel
