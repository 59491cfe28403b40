#include "platform/macos/values/StoredNumbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace nimbrel::macos {
namespace {

StoredNumber real(double value) {
  return {.type = 'd', .integer = 77, .real = value};
}

TEST(StoredNumbers, TellBooleansFromIntegers) {
  EXPECT_EQ(defaultsValue({.isBoolean = true, .type = 'c', .integer = 1}), DefaultsValue(true));
  EXPECT_EQ(defaultsValue({.isBoolean = true, .type = 'c', .integer = 0}), DefaultsValue(false));
  EXPECT_EQ(defaultsValue({.type = 'q', .integer = 1}), DefaultsValue(qint64{1}));
  EXPECT_EQ(defaultsValue({.type = 'c', .integer = 0}), DefaultsValue(qint64{0}));
}

TEST(StoredNumbers, TakeWholeRealsForIntegersAndOthersForForeign) {
  EXPECT_EQ(defaultsValue(real(300.0)), DefaultsValue(qint64{300}));
  EXPECT_EQ(defaultsValue(real(-1.0)), DefaultsValue(qint64{-1}));
  EXPECT_EQ(defaultsValue(real(0.5)), DefaultsValue(ForeignDefault{}));
  EXPECT_EQ(defaultsValue(real(std::numeric_limits<double>::quiet_NaN())), DefaultsValue(ForeignDefault{}));
  EXPECT_EQ(defaultsValue(real(9223372036854775808.0)), DefaultsValue(ForeignDefault{}));
  EXPECT_EQ(defaultsValue(real(-9223372036854775808.0)), DefaultsValue(std::numeric_limits<qint64>::min()));
}

TEST(StoredNumbers, TakeIntegersBeyondTheirRangeForForeign) {
  EXPECT_EQ(defaultsValue({.type = 'Q', .integer = -1, .natural = std::numeric_limits<quint64>::max()}),
            DefaultsValue(ForeignDefault{}));
  EXPECT_EQ(defaultsValue({.type = 'Q', .integer = 5, .natural = 5}), DefaultsValue(qint64{5}));
}

}  // namespace
}  // namespace nimbrel::macos
