#pragma once

#include <QtGlobal>

#include "platform/UserDefaults.h"

/// Numbers in the user's defaults, which know only one class of number.
namespace nimbrel::macos {

/// A stored number, as its object tells it.
struct StoredNumber final {
  /// Whether it is one of the two booleans, which are objects of a type of their own.
  bool isBoolean = false;
  /// The type that it was stored with: the first letter of its Objective-C type encoding.
  char type = 'q';
  /// Its value as a signed and an unsigned whole number and as a real one.
  qint64 integer = 0;
  quint64 natural = 0;
  double real = 0;
};

/// What it is to the program: a boolean, a whole number, or, where it has a fraction or is out of range,
/// nothing that the program ever stores.
[[nodiscard]] DefaultsValue defaultsValue(const StoredNumber& number);

}  // namespace nimbrel::macos
