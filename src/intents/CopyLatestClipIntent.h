#pragma once

#include <QString>

#include "intents/IntentServices.h"

namespace nimbrel {

/// Puts the most recent text that is no secret on the pasteboard. Main thread.
class CopyLatestClipIntent final {
 public:
  /// Without services, while the program starts, it fails.
  explicit CopyLatestClipIntent(const IntentServices* services) : services_(services) {}

  [[nodiscard]] static QString title();

  /// Tells what to say to the user.
  void perform(const IntentDone<QString>& done) const;

 private:
  const IntentServices* services_;
};

}  // namespace nimbrel
