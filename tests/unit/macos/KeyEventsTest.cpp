#include "platform/macos/values/KeyEvents.h"

#include <gtest/gtest.h>

#include "app/hotkeys/HotKeyCombo.h"
#include "platform/HotKeyRegistrar.h"

namespace nimbrel::macos {
namespace {

using namespace Qt::StringLiterals;

TEST(KeyEvents, PasteWithCommandVAndNoOtherModifier) {
  EXPECT_EQ(kPasteKeyCode, 9);
  EXPECT_EQ(kPasteFlags, 0x100000);
  EXPECT_EQ(kPasteSourceState, 0);
  EXPECT_EQ(kPasteTap, 2);
}

TEST(KeyEvents, TranslateFlagsToTheCarbonMask) {
  EXPECT_EQ(carbonModifiers(eventFlag::command), hotKeyModifier::command);
  EXPECT_EQ(carbonModifiers(eventFlag::shift), hotKeyModifier::shift);
  EXPECT_EQ(carbonModifiers(eventFlag::option), hotKeyModifier::option);
  EXPECT_EQ(carbonModifiers(eventFlag::control), hotKeyModifier::control);
  EXPECT_EQ(carbonModifiers(0x1E0000), hotKeyModifier::all);
}

TEST(KeyEvents, LeaveLocksAndSidesOutOfTheMask) {
  // Caps Lock, the keypad, the function key, and the bits that tell left from right.
  EXPECT_EQ(carbonModifiers(0x10000 | 0x200000 | 0x800000 | 0xFFFF), 0);
}

TEST(KeyEvents, MakeCombinationsOfPresses) {
  const auto press = pressedKey(9, eventFlag::command | eventFlag::shift, u"V"_s);
  ASSERT_TRUE(press);
  const auto combo = recordedCombo(*press);
  ASSERT_TRUE(combo);
  EXPECT_EQ(combo->displayString(), u"⇧⌘V"_s);
  EXPECT_EQ(pressedKey(0, eventFlag::command, u"a"_s)->keyCode, 0U) << "the key at position 0 is a key";
}

TEST(KeyEvents, TakeModifiersAndLocksForNoKeys) {
  for (quint32 code = 54; code <= 63; ++code) {
    EXPECT_FALSE(pressedKey(code, eventFlag::command, {})) << code;
  }
  EXPECT_TRUE(pressedKey(53, 0, {}));
  EXPECT_TRUE(pressedKey(64, 0, {}));
}

TEST(KeyEvents, CloseThePreviewWithSpaceAndEscape) {
  EXPECT_TRUE(closesPreview(kKeyDownType, kSpaceKeyCode));
  EXPECT_TRUE(closesPreview(kKeyDownType, 53));
  EXPECT_FALSE(closesPreview(kKeyDownType, 125));
  EXPECT_FALSE(closesPreview(kKeyDownType + 1, kSpaceKeyCode)) << "the key going up";
  EXPECT_TRUE(closesPreviewAnywhere(kKeyDownType, kSpaceKeyCode));
  EXPECT_FALSE(closesPreviewAnywhere(kKeyDownType, 53));
  EXPECT_EQ(kKeyDownType, 10);
  EXPECT_EQ(kKeyDownMask, 1 << 10);
}

}  // namespace
}  // namespace nimbrel::macos
