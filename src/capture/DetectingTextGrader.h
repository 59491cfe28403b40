#pragma once

#include "capture/CaptureServices.h"
#include "capture/MainThreadCalls.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// Grades with `SensitiveDetector`, texts of several lines on a queue of their own, "Nimbrel.detection": they
/// may be long.
class DetectingTextGrader final : public TextGrader {
 public:
  DetectingTextGrader();

  [[nodiscard]] SensitivityLevel classify(const QString& text, const std::optional<QString>& sourceBundleID,
                                          bool detectCodes) const override;
  void classifyText(const QString& text, const std::optional<QString>& sourceBundleID, Graded done) override;

  /// Finishes all that was asked for so far, *waiting*, and tells the grades: some milliseconds for each
  /// text. For the end of the program.
  void finish();

 private:
  MainThreadCalls calls_;
  // Last member, first to go: what it still runs uses all of the above.
  SerialQueue queue_;
};

}  // namespace nimbrel
