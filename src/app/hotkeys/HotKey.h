#pragma once

#include <functional>

#include "app/hotkeys/HotKeyCombo.h"
#include "app/hotkeys/HotKeyDispatcher.h"

namespace nimbrel {

/// One system-wide key combination and what it does, idle until registered; unregistered when destroyed. Main
/// thread.
class HotKey final {
 public:
  /// The dispatcher must outlive the hot key.
  HotKey(HotKeyDispatcher& dispatcher, std::function<void()> handler);
  ~HotKey();
  HotKey(const HotKey&) = delete;
  HotKey& operator=(const HotKey&) = delete;

  /// Registers the combination in place of the one registered before. False when it is refused; then nothing
  /// is registered any more.
  [[nodiscard]] bool registerCombo(const HotKeyCombo& combo);

  [[nodiscard]] quint32 id() const { return id_; }

 private:
  HotKeyDispatcher& dispatcher_;
  const quint32 id_;
  const std::function<void()> handler_;
};

}  // namespace nimbrel
