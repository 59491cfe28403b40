#pragma once

#include <QHash>
#include <QString>
#include <chrono>

#include "platform/Clock.h"

namespace nimbrel {

/// How often others may ask: each so many times at once and so many a second, and all of them together some
/// more. One thread.
class CallBudget final {
 public:
  /// More than anybody types in a search, and less than anybody notices.
  static constexpr double kBurst = 40;
  static constexpr double kPerSecond = 20;
  static constexpr double kBurstOfAll = 200;
  static constexpr double kPerSecondOfAll = 100;

  /// The clock outlives this.
  explicit CallBudget(const Clock& clock) : clock_(clock), all_{kBurstOfAll, clock.steadyNow()} {}

  /// Whether a caller may ask now; it is counted if so.
  [[nodiscard]] bool admits(const QString& caller);

  /// How many callers are remembered; those who have not asked for a while are not.
  [[nodiscard]] qsizetype callers() const { return callers_.size(); }

 private:
  struct Bucket {
    double calls = 0;
    std::chrono::steady_clock::time_point moment;
  };

  static void fill(Bucket& bucket, double perSecond, double most, std::chrono::steady_clock::time_point now);
  void forgetQuietCallers(std::chrono::steady_clock::time_point now);

  const Clock& clock_;
  Bucket all_;
  QHash<QString, Bucket> callers_;
};

}  // namespace nimbrel
