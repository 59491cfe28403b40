#pragma once

#include "platform/KeystrokePoster.h"

namespace nimbrel::macos {

/// Command-V as Core Graphics posts it to the session.
class CoreGraphicsKeystrokes final : public KeystrokePoster {
 public:
  void postPaste() override;
};

}  // namespace nimbrel::macos
