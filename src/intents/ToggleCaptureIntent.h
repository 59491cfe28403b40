#pragma once

#include <QString>

#include "intents/IntentServices.h"

namespace nimbrel {

/// Pauses the capture, or resumes it. Asks nobody for a proof. Main thread.
class ToggleCaptureIntent final {
 public:
  struct Toggled final {
    bool paused = false;
    QString dialog;
  };

  /// Without services, while the program starts, it fails.
  explicit ToggleCaptureIntent(const IntentServices* services) : services_(services) {}

  [[nodiscard]] static QString title();

  [[nodiscard]] IntentResult<Toggled> perform() const;

 private:
  const IntentServices* services_;
};

}  // namespace nimbrel
