#include "platform/macos/values/ScreenGeometry.h"

#include <gtest/gtest.h>

namespace nimbrel::macos {
namespace {

TEST(ScreenGeometry, CountsFromTheOtherCorner) {
  EXPECT_EQ(flipped({100, 500, 480, 440}, 1080), QRectF(100, 140, 480, 440));
  EXPECT_EQ(flipped({0, 0, 1920, 1080}, 1080), QRectF(0, 0, 1920, 1080));
}

TEST(ScreenGeometry, GoesBothWays) {
  // On a screen above the first one, too.
  const QRectF area(-300, -700, 640, 640);
  EXPECT_EQ(flipped(flipped(area, 900), 900), area);
}

}  // namespace
}  // namespace nimbrel::macos
