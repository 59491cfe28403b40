#pragma once

#include <QAbstractListModel>

#include "capture/ClipboardStore.h"

namespace nimbrel {

/// The visible part of the history: all of it, or what matches the query. Follows the store's changes row by
/// row; only another query rebuilds it.
class ClipListModel final : public QAbstractListModel {
 public:
  /// The rows that Command-1 … Command-9 reach.
  static constexpr int kDirectRows = 9;

  /// The store must outlive the model.
  ClipListModel(ClipboardStore& store, QObject* parent);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  [[nodiscard]] const ClipRef& clipAt(int row) const { return rows_.at(row); }
  [[nodiscard]] std::optional<int> rowOf(const QUuid& id) const;

  [[nodiscard]] const QString& query() const { return query_; }
  void setQuery(const QString& query);

 private:
  [[nodiscard]] bool isVisible(const IndexedClip& clip) const;
  [[nodiscard]] QList<ClipRef> visibleClips() const;
  /// The row that a clip of the store has, or would have, among the visible ones.
  [[nodiscard]] int rowForStoreRow(qsizetype storeRow) const;
  void onInserted(qsizetype storeRow);
  void onMoved(qsizetype to);
  void onChanged(qsizetype storeRow);
  void onRemoved(const QList<qsizetype>& storeRows, const QList<ClipRef>& clips);
  void update(int row, const ClipRef& clip);
  /// Takes rows out, given last first, run by run.
  void removeRowsAt(const QList<int>& rows);

  ClipboardStore& store_;
  QString query_;
  QList<ClipRef> rows_;
};

}  // namespace nimbrel
