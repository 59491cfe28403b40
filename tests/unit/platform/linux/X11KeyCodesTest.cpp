#include "platform/linux/X11KeyCodes.h"

#include <gmock/gmock.h>

#include <set>

namespace nimbrel {
namespace {

TEST(X11KeyCodes, AreThePositionsOfTheVirtualKeyCodes) {
  EXPECT_EQ(x11KeyCode(9), 55);     // V
  EXPECT_EQ(x11KeyCode(45), 57);    // N
  EXPECT_EQ(x11KeyCode(49), 65);    // Space
  EXPECT_EQ(x11KeyCode(53), 9);     // Escape
  EXPECT_EQ(x11KeyCode(0), 38);     // A
  EXPECT_EQ(x11KeyCode(36), 36);    // Return
  EXPECT_EQ(x11KeyCode(122), 67);   // F1
  EXPECT_EQ(x11KeyCode(126), 111);  // Up
}

TEST(X11KeyCodes, AreDifferentForEveryKey) {
  std::set<quint8> seen;
  for (quint32 key = 0; key < 256; ++key) {
    if (const auto code = x11KeyCode(key)) {
      EXPECT_TRUE(seen.insert(*code).second) << key;
    }
  }
  EXPECT_GT(seen.size(), 90U);
}

TEST(X11KeyCodes, LeadBackToTheVirtualKeyCodes) {
  for (quint32 key = 0; key < 256; ++key) {
    if (const auto code = x11KeyCode(key)) {
      EXPECT_EQ(virtualKeyCode(*code), key);
    }
  }
  EXPECT_FALSE(virtualKeyCode(0));
  EXPECT_FALSE(virtualKeyCode(255));
  EXPECT_FALSE(virtualKeyCode(55 + 256));
}

TEST(X11KeyCodes, AreMissingForKeysThatPcsLack) {
  EXPECT_FALSE(x11KeyCode(52));
  EXPECT_FALSE(x11KeyCode(4000));
}

}  // namespace
}  // namespace nimbrel
