#include "platform/common/CallBudget.h"

#include <algorithm>

namespace nimbrel {
namespace {

/// Who is remembered before the others are forgotten; far more than can ask in the time that it takes.
constexpr qsizetype kManyCallers = 256;

}  // namespace

void CallBudget::fill(Bucket& bucket, double perSecond, double most,
                      std::chrono::steady_clock::time_point now) {
  const double seconds = std::chrono::duration<double>(now - bucket.moment).count();
  bucket.calls = std::min(most, bucket.calls + seconds * perSecond);
  bucket.moment = now;
}

bool CallBudget::admits(const QString& caller) {
  const auto now = clock_.steadyNow();
  fill(all_, kPerSecondOfAll, kBurstOfAll, now);
  // Whoever is refused here is not remembered either.
  if (all_.calls < 1) return false;
  if (callers_.size() >= kManyCallers) forgetQuietCallers(now);
  auto bucket = callers_.find(caller);
  if (bucket == callers_.end()) bucket = callers_.insert(caller, {kBurst, now});
  fill(*bucket, kPerSecond, kBurst, now);
  if (bucket->calls < 1) return false;
  bucket->calls -= 1;
  all_.calls -= 1;
  return true;
}

void CallBudget::forgetQuietCallers(std::chrono::steady_clock::time_point now) {
  callers_.removeIf([&](auto entry) {
    fill(entry.value(), kPerSecond, kBurst, now);
    return entry.value().calls >= kBurst;
  });
}

}  // namespace nimbrel
