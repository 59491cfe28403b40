#pragma once

#include <QList>
#include <QUuid>

namespace nimbrel {

/// The ids of the clips that wait to be pasted, in the order in which they were queued; none twice. Each
/// method says whether it changed anything.
class PasteQueue final {
 public:
  [[nodiscard]] const QList<QUuid>& ids() const { return ids_; }
  [[nodiscard]] bool contains(const QUuid& id) const { return ids_.contains(id); }

  bool append(const QUuid& id) {
    if (contains(id)) return false;
    ids_.append(id);
    return true;
  }

  /// Puts an id where it was before; one that is further back than the end comes at the end.
  bool insert(qsizetype position, const QUuid& id) {
    if (contains(id)) return false;
    ids_.insert(qMin(position, ids_.size()), id);
    return true;
  }

  bool remove(const QUuid& id) { return ids_.removeOne(id); }

  /// Drops the ids for which the predicate holds.
  template <typename Predicate>
  bool removeIf(Predicate&& predicate) {
    return ids_.removeIf(predicate) > 0;
  }

 private:
  QList<QUuid> ids_;
};

}  // namespace nimbrel
