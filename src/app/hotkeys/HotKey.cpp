#include "app/hotkeys/HotKey.h"

namespace nimbrel {

HotKey::HotKey(HotKeyDispatcher& dispatcher, std::function<void()> handler)
    : dispatcher_(dispatcher), id_(dispatcher.nextId()), handler_(std::move(handler)) {}

HotKey::~HotKey() {
  dispatcher_.remove(id_);
}

bool HotKey::registerCombo(const HotKeyCombo& combo) {
  return dispatcher_.add(id_, combo, handler_);
}

}  // namespace nimbrel
