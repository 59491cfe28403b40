#pragma once

#include <utility>

#include "platform/InstanceRequests.h"

namespace nimbrel {

/// A reply that names what went wrong and leaves the words for it to whoever shows them.
[[nodiscard]] inline IntentReply failedReply(QStringView error) {
  return {.error = error.toString()};
}

/// An answer that is given exactly once: the first reply counts, and where nobody has replied when this goes,
/// another reply is given instead. Held by whoever may still answer. One thread.
class AnswerOnce final {
 public:
  AnswerOnce(IntentAnswer answer, IntentReply otherwise)
      : answer_(std::move(answer)), otherwise_(std::move(otherwise)) {}
  ~AnswerOnce() { give(otherwise_); }
  AnswerOnce(const AnswerOnce&) = delete;
  AnswerOnce& operator=(const AnswerOnce&) = delete;

  void give(const IntentReply& reply) {
    // Whoever is answered may ask again, or let go of this.
    if (const IntentAnswer answer = std::exchange(answer_, {})) answer(reply);
  }

 private:
  IntentAnswer answer_;
  IntentReply otherwise_;
};

}  // namespace nimbrel
