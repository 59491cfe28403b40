#pragma once

#include <QHash>
#include <QObject>
#include <functional>

#include "app/hotkeys/HotKeyCombo.h"
#include "platform/HotKeyRegistrar.h"

namespace nimbrel {

/// Logs that a combination could not be registered.
void logRefusal(const HotKeyCombo& combo);

/// The table from hot-key identifiers to actions, one per process. Main thread.
class HotKeyDispatcher final : public QObject {
 public:
  /// Takes the registrar's press handler; the registrar must outlive this.
  explicit HotKeyDispatcher(HotKeyRegistrar& registrar);
  ~HotKeyDispatcher() override;

  /// A number that no other hot key of the process has: 1, 2, 3 …
  [[nodiscard]] quint32 nextId();

  /// Registers a combination and its action under an identifier, in place of what it had before. False when
  /// the combination is refused; then the identifier has neither combination nor action.
  [[nodiscard]] bool add(quint32 id, const HotKeyCombo& combo, std::function<void()> handler);

  void remove(quint32 id);

  /// Gives all combinations back for a while, so that the keys reach the program as any others do.
  void suspend();

  /// Registers them again. One that somebody else has taken meanwhile is logged, and does nothing any more.
  void resume();

 private:
  struct Entry {
    HotKeyCombo combo;
    std::function<void()> handler;
  };

  [[nodiscard]] bool registerEntry(quint32 id, const HotKeyCombo& combo);
  void run(quint32 id);

  HotKeyRegistrar& registrar_;
  QHash<quint32, Entry> entries_;
  quint32 lastId_ = 0;
  bool suspended_ = false;
};

}  // namespace nimbrel
