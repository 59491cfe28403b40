#pragma once

#include <map>
#include <memory>

#include "platform/HotKeyRegistrar.h"

struct OpaqueEventHandlerRef;
struct OpaqueEventHotKeyRef;

namespace nimbrel::macos {

/// The Carbon event manager's hot keys, which need no permission. Their events come through the application's
/// own run loop, the toolkit's.
class CarbonHotKeys final : public HotKeyRegistrar {
 public:
  CarbonHotKeys();
  ~CarbonHotKeys() override;

  [[nodiscard]] bool registerHotKey(quint32 id, quint32 keyCode, quint32 modifiers) override;
  void unregisterHotKey(quint32 id) override;
  void setPressHandler(std::function<void(quint32 id)> handler) override { *handler_ = std::move(handler); }

 private:
  /// Shared with what is on its way to the main queue, which may come when this has gone.
  std::shared_ptr<std::function<void(quint32)>> handler_;
  std::map<quint32, OpaqueEventHotKeyRef*> registered_;
  OpaqueEventHandlerRef* eventHandler_ = nullptr;
};

}  // namespace nimbrel::macos
