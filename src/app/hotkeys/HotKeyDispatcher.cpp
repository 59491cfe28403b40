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

bool HotKeyDispatcher::take(quint32 id, Entry& entry) {
  entry.isRegistered =
      entry.isRegistered || registrar_.registerHotKey(id, entry.combo.keyCode, entry.combo.modifiers);
  return entry.isRegistered;
}

void HotKeyDispatcher::giveBackAll() {
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
    if (std::exchange(entry->isRegistered, false)) registrar_.unregisterHotKey(entry.key());
  }
}

void HotKeyDispatcher::takeAll() {
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
    if (!take(entry.key(), *entry)) logRefusal(entry->combo);
  }
}

bool HotKeyDispatcher::add(quint32 id, const HotKeyCombo& combo, std::function<void()> handler) {
  remove(id);
  // While the others are given back, what they hold could not be told.
  const bool suspended = suspensions_ > 0;
  if (suspended) takeAll();
  Entry entry{combo, std::move(handler)};
  const bool accepted = take(id, entry);
  if (accepted) entries_.insert(id, std::move(entry));
  if (suspended) giveBackAll();
  return accepted;
}

void HotKeyDispatcher::remove(quint32 id) {
  const Entry entry = entries_.take(id);
  if (entry.isRegistered) registrar_.unregisterHotKey(id);
}

void HotKeyDispatcher::suspend() {
  if (suspensions_++ == 0) giveBackAll();
}

void HotKeyDispatcher::resume() {
  if (--suspensions_ == 0) takeAll();
}

void HotKeyDispatcher::run(quint32 id) {
  // A copy, since the action may remove its own entry.
  const Entry entry = entries_.value(id);
  if (entry.isRegistered && entry.handler) entry.handler();
}

void logRefusal(const HotKeyCombo& combo) {
  qCCritical(clipboardLog, "No se pudo registrar %s: puede que otra app lo use.",
             qUtf8Printable(combo.displayString()));
}

}  // namespace nimbrel
