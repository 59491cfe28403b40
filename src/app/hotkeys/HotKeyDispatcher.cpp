#include "app/hotkeys/HotKeyDispatcher.h"

#include <exception>
#include <limits>

namespace nimbrel {

HotKeyDispatcher::HotKeyDispatcher(HotKeyRegistrar& registrar) : registrar_(registrar) {
  // Looked up only when the queued call runs: a press of a hot key that is gone by then runs nothing.
  registrar_.setPressHandler([this](quint32 id) {
    QMetaObject::invokeMethod(
        this, [this, id] { run(id); }, Qt::QueuedConnection);
  });
}

HotKeyDispatcher::~HotKeyDispatcher() {
  registrar_.setPressHandler({});
}

quint32 HotKeyDispatcher::nextId() {
  if (lastId_ == std::numeric_limits<quint32>::max()) std::terminate();
  return ++lastId_;
}

bool HotKeyDispatcher::add(quint32 id, quint32 keyCode, quint32 modifiers, std::function<void()> handler) {
  remove(id);
  if (!registrar_.registerHotKey(id, keyCode, modifiers)) return false;
  handlers_.insert(id, std::move(handler));
  return true;
}

void HotKeyDispatcher::remove(quint32 id) {
  if (handlers_.remove(id)) registrar_.unregisterHotKey(id);
}

void HotKeyDispatcher::run(quint32 id) {
  // A copy, since the action may remove its own entry.
  const auto handler = handlers_.value(id);
  if (handler) handler();
}

}  // namespace nimbrel
