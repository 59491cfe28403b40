#include "capture/DetectingTextGrader.h"

#include <utility>

#include "capture/detection/SensitiveDetector.h"

namespace nimbrel {

DetectingTextGrader::DetectingTextGrader()
    : queue_(QStringLiteral("Nimbrel.detection"), SerialQueue::Priority::userInitiated) {}

SensitivityLevel DetectingTextGrader::classify(const QString& text,
                                               const std::optional<QString>& sourceBundleID,
                                               bool detectCodes) const {
  return SensitiveDetector::classify(text, sourceBundleID, detectCodes);
}

void DetectingTextGrader::classifyText(const QString& text, const std::optional<QString>& sourceBundleID,
                                       Graded done) {
  queue_.post([this, text, sourceBundleID, done = std::move(done)]() mutable {
    const SensitivityLevel level = SensitiveDetector::classifyText(text, sourceBundleID);
    calls_.post([level, done = std::move(done)] { done(level); });
  });
}

void DetectingTextGrader::finish() {
  queue_.runAndWait([] {});
  calls_.deliver();
}

}  // namespace nimbrel
