#include "platform/macos/values/HotKeyEvents.h"

#include <gtest/gtest.h>

namespace nimbrel::macos {
namespace {

TEST(HotKeyEvents, PackFourCharactersIntoACode) {
  EXPECT_EQ(kHotKeySignature, 0x434C4950);
  EXPECT_EQ(kHotKeyEventClass, 0x6B657962);
  EXPECT_EQ(kHotKeyIdType, 0x686B6964);
  EXPECT_EQ(kDirectObjectParameter, 0x2D2D2D2D);
  EXPECT_EQ(kHotKeyPressedKind, 5);
  EXPECT_EQ(kHotKeyIdBytes, 8);
}

TEST(HotKeyEvents, RegisterOnlyWithoutAnErrorAndWithAReference) {
  constexpr qint32 kHotKeyExists = -9878;
  const int reference = 0;
  EXPECT_TRUE(isRegistered(kNoError, &reference));
  EXPECT_FALSE(isRegistered(kNoError, nullptr));
  EXPECT_FALSE(isRegistered(kHotKeyExists, nullptr));
  EXPECT_FALSE(isRegistered(kHotKeyExists, &reference));
}

TEST(HotKeyEvents, GiveTheReadingsErrorBackAndPressNothing) {
  constexpr qint32 kParameterNotFound = -9870;
  const HotKeyPress press = hotKeyPress(kParameterNotFound, kHotKeySignature, 1);
  EXPECT_EQ(press.status, kParameterNotFound);
  EXPECT_FALSE(press.id);
}

TEST(HotKeyEvents, PressTheHotKeyThatWasRead) {
  const HotKeyPress press = hotKeyPress(kNoError, kHotKeySignature, 7);
  EXPECT_EQ(press.status, kNoError);
  EXPECT_EQ(press.id, 7U);
}

TEST(HotKeyEvents, LeaveHotKeysOfOthersToThem) {
  const HotKeyPress press = hotKeyPress(kNoError, fourCharCode("ABCD"), 1);
  EXPECT_EQ(press.status, kEventNotHandled);
  EXPECT_FALSE(press.id);
}

}  // namespace
}  // namespace nimbrel::macos
