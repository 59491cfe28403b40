#pragma once

#include "platform/KeyReader.h"

namespace nimbrel::macos {

/// The `NSEvent` behind a key event: the toolkit keeps its key code, not what the key gives without
/// modifiers.
class AppKitKeyReader final : public KeyReader {
 public:
  [[nodiscard]] std::optional<PressedKey> read(const QKeyEvent& event) const override;
};

}  // namespace nimbrel::macos
