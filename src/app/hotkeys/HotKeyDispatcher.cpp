#include "app/hotkeys/HotKeyDispatcher.h"

#include <exception>
#include <limits>
#include <utility>

#include "capture/model/Log.h"

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

bool HotKeyDispatcher::registerEntry(quint32 id, const HotKeyCombo& combo) {
  return registrar_.registerHotKey(id, combo.keyCode, combo.modifiers);
}

bool HotKeyDispatcher::add(quint32 id, const HotKeyCombo& combo, std::function<void()> handler) {
  remove(id);
  // While the others are given back, what they hold could not be told.
  resume();
  if (!registerEntry(id, combo)) return false;
  entries_.insert(id, {combo, std::move(handler)});
  return true;
}

void HotKeyDispatcher::remove(quint32 id) {
  if (entries_.remove(id) && !suspended_) registrar_.unregisterHotKey(id);
}

void HotKeyDispatcher::suspend() {
  if (std::exchange(suspended_, true)) return;
  for (auto it = entries_.keyBegin(); it != entries_.keyEnd(); ++it)
    registrar_.unregisterHotKey(*it);
}

void HotKeyDispatcher::resume() {
  if (!std::exchange(suspended_, false)) return;
  entries_.removeIf([this](QHash<quint32, Entry>::iterator entry) {
    if (registerEntry(entry.key(), entry->combo)) return false;
    logRefusal(entry->combo);
    return true;
  });
}

void HotKeyDispatcher::run(quint32 id) {
  if (suspended_) return;
  // A copy, since the action may remove its own entry.
  const auto handler = entries_.value(id).handler;
  if (handler) handler();
}

void logRefusal(const HotKeyCombo& combo) {
  qCCritical(clipboardLog, "No se pudo registrar %s: puede que otra app lo use.",
             qUtf8Printable(combo.displayString()));
}

}  // namespace nimbrel
