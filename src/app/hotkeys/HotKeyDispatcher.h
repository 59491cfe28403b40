#pragma once

#include <QHash>
#include <QObject>
#include <functional>

#include "platform/HotKeyRegistrar.h"

namespace nimbrel {

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
  [[nodiscard]] bool add(quint32 id, quint32 keyCode, quint32 modifiers, std::function<void()> handler);

  void remove(quint32 id);

 private:
  void run(quint32 id);

  HotKeyRegistrar& registrar_;
  QHash<quint32, std::function<void()>> handlers_;
  quint32 lastId_ = 0;
};

}  // namespace nimbrel
