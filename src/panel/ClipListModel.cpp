#include "panel/ClipListModel.h"

#include <algorithm>

#include "panel/ClipRowText.h"

namespace nimbrel {

ClipListModel::ClipListModel(ClipboardStore& store, QObject* parent)
    : QAbstractListModel(parent), store_(store), rows_(visibleClips()) {
  connect(&store_, &ClipboardStore::clipInserted, this, &ClipListModel::onInserted);
  connect(&store_, &ClipboardStore::clipMovedToTop, this, &ClipListModel::onMovedToTop);
  connect(&store_, &ClipboardStore::clipChanged, this, &ClipListModel::onChanged);
  connect(&store_, &ClipboardStore::clipRemoved, this, &ClipListModel::onRemoved);
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
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const ClipRef& clip) { return clip->clip.id == id; });
  if (found == rows_.end()) return std::nullopt;
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

void ClipListModel::onInserted() {
  const ClipRef clip = store_.items().at(0);
  if (!isVisible(*clip)) return;
  beginInsertRows({}, 0, 0);
  rows_.prepend(clip);
  endInsertRows();
}

void ClipListModel::onMovedToTop() {
  const ClipRef clip = store_.items().at(0);
  const auto row = rowOf(clip->clip.id);
  if (!row) return;
  // What has just turned out to be a secret is no longer found.
  if (!isVisible(*clip)) return onRemoved(clip->clip.id);
  if (*row > 0) {
    beginMoveRows({}, *row, *row, {}, 0);
    rows_.move(*row, 0);
    endMoveRows();
  }
  rows_[0] = clip;
  Q_EMIT dataChanged(index(0), index(0));
}

void ClipListModel::onChanged(qsizetype storeRow) {
  const ClipRef clip = store_.items().at(storeRow);
  const auto row = rowOf(clip->clip.id);
  if (!row) return;
  rows_[*row] = clip;
  Q_EMIT dataChanged(index(*row), index(*row));
}

void ClipListModel::onRemoved(const QUuid& id) {
  const auto row = rowOf(id);
  if (!row) return;
  beginRemoveRows({}, *row, *row);
  rows_.removeAt(*row);
  endRemoveRows();
}

}  // namespace nimbrel
