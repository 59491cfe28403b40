#include "platform/macos/CarbonHotKeys.h"

#import <Carbon/Carbon.h>

#include "platform/macos/MainThread.h"
#include "platform/macos/values/HotKeyEvents.h"

namespace nimbrel::macos {
namespace {

using Handler = std::shared_ptr<std::function<void(quint32)>>;

static_assert(kHotKeyEventClass == kEventClassKeyboard);
static_assert(kHotKeyPressedKind == kEventHotKeyPressed);
static_assert(kDirectObjectParameter == kEventParamDirectObject);
static_assert(kHotKeyIdType == typeEventHotKeyID);
static_assert(kHotKeyIdBytes == sizeof(EventHotKeyID));

/// Only hands the press on: what a hot key does may take the event loop for a while.
OSStatus heardHotKey(EventHandlerCallRef, EventRef event, void* data) {
  EventHotKeyID id{};
  const OSStatus status =
      GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr, sizeof id, nullptr, &id);
  const HotKeyPress press = hotKeyPress(status, id.signature, id.id);
  if (press.id) {
    const std::weak_ptr<std::function<void(quint32)>> weak = *static_cast<const Handler*>(data);
    const quint32 pressed = *press.id;
    onMainThread([weak, pressed] {
      const Handler handler = weak.lock();
      if (handler && *handler) (*handler)(pressed);
    });
  }
  return press.status;
}

}  // namespace

CarbonHotKeys::CarbonHotKeys() : handler_(std::make_shared<std::function<void(quint32)>>()) {
  const EventTypeSpec pressed{kHotKeyEventClass, kHotKeyPressedKind};
  // Without it every registration fails, and the user is told of that.
  const OSStatus status =
      InstallEventHandler(GetApplicationEventTarget(), &heardHotKey, 1, &pressed, &handler_, &eventHandler_);
  if (status != noErr) eventHandler_ = nullptr;
}

CarbonHotKeys::~CarbonHotKeys() {
  for (const auto& [id, reference] : registered_)
    UnregisterEventHotKey(reference);
  if (eventHandler_) RemoveEventHandler(eventHandler_);
}

bool CarbonHotKeys::registerHotKey(quint32 id, quint32 keyCode, quint32 modifiers) {
  if (!eventHandler_) return false;
  EventHotKeyRef reference = nullptr;
  const OSStatus status = RegisterEventHotKey(keyCode, modifiers, EventHotKeyID{kHotKeySignature, id},
                                              GetApplicationEventTarget(), kEventHotKeyNoOptions, &reference);
  if (!isRegistered(status, reference)) return false;
  registered_.insert_or_assign(id, reference);
  return true;
}

void CarbonHotKeys::unregisterHotKey(quint32 id) {
  const auto found = registered_.find(id);
  if (found == registered_.end()) return;
  UnregisterEventHotKey(found->second);
  registered_.erase(found);
}

}  // namespace nimbrel::macos
