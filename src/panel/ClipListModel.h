#pragma once

#include <QAbstractListModel>
#include <QSet>

#include "capture/ClipboardStore.h"
#include "panel/ClipRowText.h"

namespace nimbrel {

/// The visible part of the history: all of it, or what answers the query. Follows the store's changes row by
/// row; only another query rebuilds it, when its answer has come.
class ClipListModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  /// The rows that Command-1 … Command-9 reach.
  static constexpr int kDirectRows = 9;

  /// The store must outlive the model.
  ClipListModel(ClipboardStore& store, QObject* parent);
  ~ClipListModel() override;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  /// Everything can be dragged into another program but what is masked.
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QStringList mimeTypes() const override;
  /// What a row gives to another program; null for a masked one. *Waits* for the disk when it has a file.
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;

  [[nodiscard]] const ClipRef& clipAt(int row) const { return rows_.at(row); }
  [[nodiscard]] std::optional<int> rowOf(const QUuid& id) const;
  [[nodiscard]] bool isQueued(int row) const { return store_.isQueued(rows_.at(row)->clip.id); }

  /// The query that the rows answer.
  [[nodiscard]] const ClipQuery& query() const { return query_; }
  /// Asks for the answer to another query; the rows stay as they are until it has come. All of the history is
  /// there at once.
  void setQuery(const ClipQuery& query);
  /// Whether the rows are about to be replaced by the answer to another query.
  [[nodiscard]] bool isSearching() const { return store_.backgroundSearch().isRunning(); }
  /// *Waits* for the answer that is still to come.
  void finishSearch() { store_.backgroundSearch().finish(); }

  /// The image clips among the rows as they were when they were last rebuilt.
  [[nodiscard]] const QList<int>& imageRows() const { return imageRows_; }

  /// Shows the content of a sensitive clip, until all are masked again.
  void reveal(const QUuid& id);
  void maskAll();
  [[nodiscard]] Secrecy secrecyOf(int row) const;

 private:
  [[nodiscard]] bool isVisible(const IndexedClip& clip) const { return matchesQuery(clip, query_); }
  void show(const ClipQuery& query, const FoundClips& found);
  /// Brings what was found up to date with what has happened since it was looked for.
  void catchUp();
  /// The row that a clip of the store has, or would have, among the visible ones.
  [[nodiscard]] int rowForStoreRow(qsizetype storeRow) const;
  void onInserted(qsizetype storeRow);
  void onMoved(qsizetype to);
  void onChanged(qsizetype storeRow);
  void onRemoved(const QList<qsizetype>& storeRows, const QList<ClipRef>& clips);
  void update(int row, const ClipRef& clip);
  /// Notes that a clip is not any more what a running search sees.
  void touch(const QUuid& id);
  /// Takes rows out, given last first, run by run.
  void removeRowsAt(const QList<int>& rows);

  ClipboardStore& store_;
  ClipQuery query_;
  QList<ClipRef> rows_;
  QList<int> imageRows_;
  /// What has changed since the running search began.
  QSet<QUuid> touched_;
  /// The sensitive clips whose content is shown.
  QSet<QUuid> revealed_;
};

}  // namespace nimbrel
