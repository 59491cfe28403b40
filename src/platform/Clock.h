#pragma once

#include <chrono>

namespace nimbrel {

/// The time, as the rules of the program see it. Any thread.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The wall clock, for dates that are stored.
  [[nodiscard]] virtual std::chrono::system_clock::time_point now() const = 0;

  /// A clock that never goes back, for delays and guards.
  [[nodiscard]] virtual std::chrono::steady_clock::time_point steadyNow() const = 0;
};

/// The real time.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] std::chrono::system_clock::time_point now() const override {
    return std::chrono::system_clock::now();
  }
  [[nodiscard]] std::chrono::steady_clock::time_point steadyNow() const override {
    return std::chrono::steady_clock::now();
  }
};

}  // namespace nimbrel
