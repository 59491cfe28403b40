#include "platform/macos/values/StoredNumbers.h"

#include <cmath>
#include <limits>

namespace nimbrel::macos {
namespace {

DefaultsValue wholeNumber(double real) {
  // 2^63 is a double, the largest whole number is not.
  constexpr double kLimit = 9223372036854775808.0;
  if (!(real >= -kLimit && real < kLimit) || std::trunc(real) != real) return ForeignDefault{};
  return static_cast<qint64>(real);
}

}  // namespace

DefaultsValue defaultsValue(const StoredNumber& number) {
  if (number.isBoolean) return number.integer != 0;
  switch (number.type) {
    case 'f':
    case 'd':
      return wholeNumber(number.real);
    case 'Q':
    case 'L':
      if (number.natural > static_cast<quint64>(std::numeric_limits<qint64>::max())) return ForeignDefault{};
      return static_cast<qint64>(number.natural);
    default:
      return number.integer;
  }
}

}  // namespace nimbrel::macos
