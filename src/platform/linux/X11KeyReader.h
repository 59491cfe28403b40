#pragma once

#include "platform/KeyReader.h"
#include "platform/linux/X11Session.h"

namespace nimbrel {

/// Reads keys by the X server's key codes and its keyboard layouts.
class X11KeyReader final : public KeyReader {
 public:
  /// The session must outlive this.
  explicit X11KeyReader(X11Session& session) : session_(session) {}

  [[nodiscard]] std::optional<PressedKey> read(const QKeyEvent& event) const override;

 private:
  X11Session& session_;
};

/// The character that a key symbol stands for, also for a dead key, which gives one only with the next key;
/// empty for what has none.
[[nodiscard]] QString characterOf(quint32 keySymbol);

}  // namespace nimbrel
