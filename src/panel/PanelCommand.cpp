#include "panel/PanelCommand.h"

#include <QKeySequence>
#include <algorithm>
#include <array>

namespace nimbrel {
namespace {

using Kind = PanelCommand::Kind;

/// The virtual key codes of 1 … 9 in the row of digits, by position.
constexpr std::array<quint32, 9> kDigitKeyCodes{18, 19, 20, 21, 23, 22, 26, 28, 25};

std::optional<int> digitRow(const QKeyEvent& event, const KeyReader& keys) {
  if (event.key() >= Qt::Key_1 && event.key() <= Qt::Key_9) return event.key() - Qt::Key_1;
  // Another sign that a layout gives to Command with some other key has its own meaning.
  if (event.key() < Qt::Key_Space || event.key() == Qt::Key_0) return std::nullopt;
  const auto pressed = keys.read(event);
  if (!pressed || !pressed->keyCode) return std::nullopt;
  const auto* const found = std::find(kDigitKeyCodes.begin(), kDigitKeyCodes.end(), *pressed->keyCode);
  if (found == kDigitKeyCodes.end()) return std::nullopt;
  return static_cast<int>(found - kDigitKeyCodes.begin());
}

std::optional<Kind> withCommand(int key, const PanelKeyState& state) {
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Kind::pastePlain;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      return Kind::remove;
    case Qt::Key_P:
      return Kind::togglePin;
    case Qt::Key_T:
      return Kind::pasteRecognizedText;
    case Qt::Key_O:
      return Kind::openLink;
    case Qt::Key_K:
      return Kind::chooseCollection;
    case Qt::Key_N:
      return Kind::toggleQueue;
    case Qt::Key_Y:
      return Kind::preview;
    case Qt::Key_Comma:
      return Kind::openSettings;
    case Qt::Key_Z:
      return state.canUndo ? std::optional(Kind::undoRemoval) : std::nullopt;
    default:
      return std::nullopt;
  }
}

std::optional<Kind> withoutCommand(int key, const PanelKeyState& state) {
  switch (key) {
    case Qt::Key_Up:
      return Kind::selectPrevious;
    case Qt::Key_Down:
      return Kind::selectNext;
    case Qt::Key_PageUp:
      return Kind::selectPageUp;
    case Qt::Key_PageDown:
      return Kind::selectPageDown;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Kind::paste;
    case Qt::Key_Escape:
      return Kind::dismiss;
    case Qt::Key_Menu:
      return Kind::showMenu;
    default:
      break;
  }
  if (state.hasQuery) return std::nullopt;
  switch (key) {
    case Qt::Key_Home:
      return Kind::selectFirst;
    case Qt::Key_End:
      return Kind::selectLast;
    case Qt::Key_Space:
      return Kind::preview;
    default:
      return std::nullopt;
  }
}

constexpr std::array kMoves{Kind::selectPrevious, Kind::selectNext, Kind::selectPageUp,
                            Kind::selectPageDown, Kind::nextKind,   Kind::previousKind};
constexpr std::array kBesideRows{Kind::undoRemoval, Kind::nextKind, Kind::previousKind, Kind::openSettings,
                                 Kind::dismiss};

template <std::size_t count>
bool isAmong(Kind kind, const std::array<Kind, count>& kinds) {
  return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

}  // namespace

bool PanelCommand::movesOn() const {
  return isAmong(kind, kMoves);
}

bool PanelCommand::concernsRows() const {
  return !isAmong(kind, kBesideRows);
}

std::optional<PanelCommand> panelCommand(const QKeyEvent& event, const KeyReader& keys,
                                         const PanelKeyState& state) {
  const auto held = event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
  const auto command = [](std::optional<Kind> kind) {
    return kind ? std::optional(PanelCommand{*kind}) : std::nullopt;
  };
  if (event.matches(QKeySequence::NextChild)) return command(Kind::nextKind);
  if (event.matches(QKeySequence::PreviousChild)) return command(Kind::previousKind);
  if (held == Qt::ShiftModifier && event.key() == Qt::Key_F10) return command(Kind::showMenu);
  if (held == Qt::NoModifier) return command(withoutCommand(event.key(), state));
  const bool isCommand = held == Qt::ControlModifier;
  if (isCommand || held == (Qt::ControlModifier | Qt::ShiftModifier)) {
    const auto row = digitRow(event, keys);
    if (row) return PanelCommand{Kind::pasteRow, *row};
  }
  return isCommand ? command(withCommand(event.key(), state)) : std::nullopt;
}

}  // namespace nimbrel
