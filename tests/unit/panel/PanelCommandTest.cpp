#include "panel/PanelCommand.h"

#include <gmock/gmock.h>

#include "support/Fakes.h"

namespace nimbrel {
namespace {

using Kind = PanelCommand::Kind;

constexpr auto kCommand = Qt::ControlModifier;

class PanelCommandTest : public ::testing::Test {
 protected:
  std::optional<PanelCommand> command(int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    return panelCommand(QKeyEvent(QEvent::KeyPress, key, held), keys, state);
  }
  std::optional<Kind> kind(int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    const auto found = command(key, held);
    return found ? std::optional(found->kind) : std::nullopt;
  }

  testing::FakeKeyReader keys;
  PanelKeyState state;
};

TEST_F(PanelCommandTest, KnowsEveryKeyOfThePanel) {
  EXPECT_EQ(kind(Qt::Key_Up), Kind::selectPrevious);
  EXPECT_EQ(kind(Qt::Key_Down), Kind::selectNext);
  EXPECT_EQ(kind(Qt::Key_Return), Kind::paste);
  EXPECT_EQ(kind(Qt::Key_Enter, Qt::KeypadModifier), Kind::paste);
  EXPECT_EQ(kind(Qt::Key_Return, kCommand), Kind::pastePlain);
  EXPECT_EQ(kind(Qt::Key_Backspace, kCommand), Kind::remove);
  EXPECT_EQ(kind(Qt::Key_Delete, kCommand), Kind::remove);
  EXPECT_EQ(kind(Qt::Key_P, kCommand), Kind::togglePin);
  EXPECT_EQ(kind(Qt::Key_T, kCommand), Kind::pasteRecognizedText);
  EXPECT_EQ(kind(Qt::Key_O, kCommand), Kind::openLink);
  EXPECT_EQ(kind(Qt::Key_K, kCommand), Kind::chooseCollection);
  EXPECT_EQ(kind(Qt::Key_N, kCommand), Kind::toggleQueue);
  EXPECT_EQ(kind(Qt::Key_Y, kCommand), Kind::preview);
  EXPECT_EQ(kind(Qt::Key_Comma, kCommand), Kind::openSettings);
  EXPECT_EQ(kind(Qt::Key_Escape), Kind::dismiss);
  EXPECT_EQ(kind(Qt::Key_PageUp), Kind::selectPageUp);
  EXPECT_EQ(kind(Qt::Key_PageDown), Kind::selectPageDown);
  EXPECT_EQ(kind(Qt::Key_Menu), Kind::showMenu);
  EXPECT_EQ(kind(Qt::Key_F10, Qt::ShiftModifier), Kind::showMenu);
  for (int digit = 1; digit <= 9; ++digit)
    EXPECT_EQ(command(Qt::Key_0 + digit, kCommand), (PanelCommand{Kind::pasteRow, digit - 1}));
}

TEST_F(PanelCommandTest, LeavesToTheFieldWhatIsMeantForIt) {
  for (const int key : {Qt::Key_A, Qt::Key_1, Qt::Key_Left, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Tab})
    EXPECT_EQ(command(key), std::nullopt) << key;
  for (const int key : {Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_X, Qt::Key_0, Qt::Key_Left, Qt::Key_Z})
    EXPECT_EQ(command(key, kCommand), std::nullopt) << key;
  EXPECT_EQ(command(Qt::Key_P, kCommand | Qt::AltModifier), std::nullopt);
  EXPECT_EQ(command(Qt::Key_Return, Qt::ShiftModifier), std::nullopt);
}

TEST_F(PanelCommandTest, GivesSpaceAndTheEndsToTheListOnlyWithoutAQuery) {
  EXPECT_EQ(kind(Qt::Key_Space), Kind::preview);
  EXPECT_EQ(kind(Qt::Key_Home), Kind::selectFirst);
  EXPECT_EQ(kind(Qt::Key_End), Kind::selectLast);
  state.hasQuery = true;
  for (const int key : {Qt::Key_Space, Qt::Key_Home, Qt::Key_End})
    EXPECT_EQ(command(key), std::nullopt) << key;
  EXPECT_EQ(kind(Qt::Key_Y, kCommand), Kind::preview);
}

TEST_F(PanelCommandTest, UndoesADeletionWhileItCanBeUndone) {
  EXPECT_EQ(command(Qt::Key_Z, kCommand), std::nullopt);
  state.canUndo = true;
  EXPECT_EQ(kind(Qt::Key_Z, kCommand), Kind::undoRemoval);
}

TEST_F(PanelCommandTest, TakesTheDigitsByTheirPlaceWhereTheyNeedShift) {
  // On a French keyboard the key of 1 writes an ampersand.
  keys.next = PressedKey{.keyCode = 18, .modifiers = 0, .characters = QStringLiteral("&")};
  EXPECT_EQ(command(Qt::Key_Ampersand, kCommand), (PanelCommand{Kind::pasteRow, 0}));
  EXPECT_EQ(command(Qt::Key_1, kCommand | Qt::ShiftModifier), (PanelCommand{Kind::pasteRow, 0}));
  keys.next = PressedKey{.keyCode = 25, .modifiers = 0, .characters = QStringLiteral("ç")};
  EXPECT_EQ(command(Qt::Key_Ccedilla, kCommand), (PanelCommand{Kind::pasteRow, 8}));
  keys.next = PressedKey{.keyCode = 0, .modifiers = 0, .characters = QStringLiteral("q")};
  EXPECT_EQ(command(Qt::Key_Q, kCommand), std::nullopt);
}

}  // namespace
}  // namespace nimbrel
