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

  /// Ends a suspension; with the last one the combinations are registered again. One that somebody else has
  /// taken meanwhile is logged, does nothing, and is tried again after the next suspension.
  void resume();

 private:
  struct Entry {
    HotKeyCombo combo;
    std::function<void()> handler;
    bool isRegistered = false;
  };

  [[nodiscard]] bool take(quint32 id, Entry& entry);
  void giveBackAll();
  void takeAll();
  void run(quint32 id);

  HotKeyRegistrar& registrar_;
  QHash<quint32, Entry> entries_;
  quint32 lastId_ = 0;
  int suspensions_ = 0;
};

}  // namespace nimbrel
