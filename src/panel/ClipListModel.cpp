#include "panel/ClipListModel.h"

#include <QSet>
#include <algorithm>

#include "panel/ClipRowText.h"

namespace nimbrel {

ClipListModel::ClipListModel(ClipboardStore& store, QObject* parent)
    : QAbstractListModel(parent), store_(store), rows_(visibleClips()) {
  connect(&store_, &ClipboardStore::clipInserted, this, &ClipListModel::onInserted);
  connect(&store_, &ClipboardStore::clipMoved, this, [this](qsizetype, qsizetype to) { onMoved(to); });
  connect(&store_, &ClipboardStore::clipChanged, this, &ClipListModel::onChanged);
  connect(&store_, &ClipboardStore::clipsRemoved, this, &ClipListModel::onRemoved);
}

int ClipListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ClipListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_.size()) return {};
  const ClipItem& clip = rows_.at(index.row())->clip;
  if (role == Qt::DisplayRole) return previewText(clip);
  if (role == Qt::AccessibleTextRole) return accessibleText(clip);
  return {};
}

std::optional<int> ClipListModel::rowOf(const QUuid& id) const {
  // Without a query the rows are the store's, except in the middle of a change.
  const auto storeRow = store_.items().rowOf(id);
  if (storeRow && *storeRow < rows_.size() && rows_.at(*storeRow)->clip.id == id)
    return static_cast<int>(*storeRow);
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const ClipRef& clip) { return clip->clip.id == id; });
  if (found == rows_.end()) return std::nullopt;
  return static_cast<int>(found - rows_.begin());
}

int ClipListModel::rowForStoreRow(qsizetype storeRow) const {
  if (query_.isEmpty()) return static_cast<int>(storeRow);
  const auto found = std::partition_point(rows_.begin(), rows_.end(), [&](const ClipRef& clip) {
    const auto row = store_.items().rowOf(clip->clip.id);
    return row && *row < storeRow;
  });
  return static_cast<int>(found - rows_.begin());
}

void ClipListModel::setQuery(const QString& query) {
  if (query == query_) return;
  beginResetModel();
  query_ = query;
  rows_ = visibleClips();
  endResetModel();
}

bool ClipListModel::isVisible(const IndexedClip& clip) const {
  return query_.isEmpty() || matchesQuery(clip, query_);
}

QList<ClipRef> ClipListModel::visibleClips() const {
  if (query_.isEmpty()) return store_.items().clips();
  return store_.search(query_);
}

void ClipListModel::onInserted(qsizetype storeRow) {
  const ClipRef clip = store_.items().at(storeRow);
  if (!isVisible(*clip)) return;
  const int row = rowForStoreRow(storeRow);
  beginInsertRows({}, row, row);
  rows_.insert(row, clip);
  endInsertRows();
}

void ClipListModel::onMoved(qsizetype to) {
  const ClipRef clip = store_.items().at(to);
  const auto from = rowOf(clip->clip.id);
  if (!from) return;
  // What has just turned out to be a secret is no longer found.
  if (!isVisible(*clip)) return removeRowsAt({*from});
  rows_.removeAt(*from);
  const int row = rowForStoreRow(to);
  rows_.insert(*from, clip);
  if (row < *from) {
    beginMoveRows({}, *from, *from, {}, row);
    rows_.move(*from, row);
    endMoveRows();
  }
  update(row, clip);
}

void ClipListModel::onChanged(qsizetype storeRow) {
  const ClipRef clip = store_.items().at(storeRow);
  const auto row = rowOf(clip->clip.id);
  if (!row) return onInserted(storeRow);
  if (!isVisible(*clip)) return removeRowsAt({*row});
  update(*row, clip);
}

void ClipListModel::update(int row, const ClipRef& clip) {
  rows_[row] = clip;
  Q_EMIT dataChanged(index(row), index(row));
}

void ClipListModel::onRemoved(const QList<qsizetype>& storeRows, const QList<ClipRef>& clips) {
  QList<int> rows;
  if (query_.isEmpty()) {
    for (const qsizetype row : storeRows)
      rows.append(static_cast<int>(row));
    return removeRowsAt(rows);
  }
  QSet<QUuid> ids;
  for (const ClipRef& clip : clips)
    ids.insert(clip->clip.id);
  for (int row = static_cast<int>(rows_.size()) - 1; row >= 0; --row) {
    if (ids.contains(rows_.at(row)->clip.id)) rows.append(row);
  }
  removeRowsAt(rows);
}

void ClipListModel::removeRowsAt(const QList<int>& rows) {
  for (qsizetype i = 0; i < rows.size();) {
    const int last = rows.at(i);
    int first = last;
    for (++i; i < rows.size() && rows.at(i) == first - 1; ++i)
      --first;
    beginRemoveRows({}, first, last);
    rows_.remove(first, last - first + 1);
    endRemoveRows();
  }
}

}  // namespace nimbrel
