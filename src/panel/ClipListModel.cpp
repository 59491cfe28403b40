#include "panel/ClipListModel.h"

#include <QMimeData>
#include <algorithm>
#include <utility>

namespace nimbrel {
namespace {

QList<int> imageRowsOf(const QList<ClipRef>& clips) {
  QList<int> rows;
  for (qsizetype row = 0; row < clips.size(); ++row) {
    if (clips.at(row)->clip.isImage()) rows.append(static_cast<int>(row));
  }
  return rows;
}

QMimeData* mimeDataOf(const PasteboardContent& content) {
  auto* const data = new QMimeData;
  if (!content.fileUrls.isEmpty()) data->setUrls(content.fileUrls);
  if (content.text) data->setText(*content.text);
  if (content.html) data->setData(QStringLiteral("text/html"), *content.html);
  if (content.rtf) data->setData(QStringLiteral("text/rtf"), *content.rtf);
  if (content.png) data->setData(QStringLiteral("image/png"), *content.png);
  return data;
}

}  // namespace

ClipListModel::ClipListModel(ClipboardStore& store, QObject* parent)
    : QAbstractListModel(parent),
      store_(store),
      rows_(store.items().clips()),
      imageRows_(imageRowsOf(rows_)) {
  connect(&store_, &ClipboardStore::clipInserted, this, &ClipListModel::onInserted);
  connect(&store_, &ClipboardStore::clipMoved, this, [this](qsizetype, qsizetype to) { onMoved(to); });
  connect(&store_, &ClipboardStore::clipChanged, this, &ClipListModel::onChanged);
  connect(&store_, &ClipboardStore::clipsRemoved, this, &ClipListModel::onRemoved);
}

ClipListModel::~ClipListModel() {
  store_.backgroundSearch().cancel();
}

int ClipListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ClipListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_.size()) return {};
  const ClipItem& clip = rows_.at(index.row())->clip;
  if (role == Qt::DisplayRole) return previewText(clip, secrecyOf(index.row()));
  if (role == Qt::AccessibleTextRole)
    return accessibleText(clip, secrecyOf(index.row()), isQueued(index.row()));
  return {};
}

Qt::ItemFlags ClipListModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractListModel::flags(index);
  if (!index.isValid() || secrecyOf(index.row()) == Secrecy::masked) return flags;
  return flags | Qt::ItemIsDragEnabled;
}

QStringList ClipListModel::mimeTypes() const {
  return {QStringLiteral("text/plain"), QStringLiteral("text/html"), QStringLiteral("text/rtf"),
          QStringLiteral("image/png"), QStringLiteral("text/uri-list")};
}

QMimeData* ClipListModel::mimeData(const QModelIndexList& indexes) const {
  if (indexes.isEmpty() || secrecyOf(indexes.first().row()) == Secrecy::masked) return nullptr;
  const PasteboardContent content = store_.contentOf(clipAt(indexes.first().row())->clip);
  return content.isEmpty() ? nullptr : mimeDataOf(content);
}

Secrecy ClipListModel::secrecyOf(int row) const {
  const ClipItem& clip = rows_.at(row)->clip;
  if (!clip.isSensitive()) return Secrecy::none;
  return revealed_.contains(clip.id) ? Secrecy::revealed : Secrecy::masked;
}

void ClipListModel::reveal(const QUuid& id) {
  revealed_.insert(id);
  if (const auto row = rowOf(id)) Q_EMIT dataChanged(index(*row), index(*row));
}

void ClipListModel::maskAll() {
  for (const QUuid& id : std::exchange(revealed_, {})) {
    if (const auto row = rowOf(id)) Q_EMIT dataChanged(index(*row), index(*row));
  }
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
  if (query_.matchesAll()) return static_cast<int>(storeRow);
  const auto found = std::partition_point(rows_.begin(), rows_.end(), [&](const ClipRef& clip) {
    const auto row = store_.items().rowOf(clip->clip.id);
    return row && *row < storeRow;
  });
  return static_cast<int>(found - rows_.begin());
}

void ClipListModel::setQuery(const ClipQuery& query) {
  touched_.clear();
  if (query == query_) return store_.backgroundSearch().cancel();
  if (query.matchesAll()) {
    store_.backgroundSearch().cancel();
    const QList<ClipRef> all = store_.items().clips();
    return show(query, {all, imageRowsOf(all)});
  }
  store_.backgroundSearch().start(query, store_.items().snapshot(),
                                  [this, query](const FoundClips& found) { show(query, found); });
}

void ClipListModel::show(const ClipQuery& query, const FoundClips& found) {
  beginResetModel();
  query_ = query;
  rows_ = found.clips;
  imageRows_ = found.imageRows;
  if (!touched_.isEmpty()) catchUp();
  endResetModel();
}

void ClipListModel::catchUp() {
  const QSet<QUuid> touched = std::exchange(touched_, {});
  rows_.removeIf([&](const ClipRef& clip) { return touched.contains(clip->clip.id); });
  for (const QUuid& id : touched) {
    const auto storeRow = store_.items().rowOf(id);
    if (!storeRow) continue;
    const ClipRef clip = store_.items().at(*storeRow);
    if (isVisible(*clip)) rows_.insert(rowForStoreRow(*storeRow), clip);
  }
  imageRows_ = imageRowsOf(rows_);
}

void ClipListModel::touch(const QUuid& id) {
  if (isSearching()) touched_.insert(id);
}

void ClipListModel::onInserted(qsizetype storeRow) {
  const ClipRef clip = store_.items().at(storeRow);
  touch(clip->clip.id);
  if (!isVisible(*clip)) return;
  const int row = rowForStoreRow(storeRow);
  beginInsertRows({}, row, row);
  rows_.insert(row, clip);
  endInsertRows();
}

void ClipListModel::onMoved(qsizetype to) {
  const ClipRef clip = store_.items().at(to);
  touch(clip->clip.id);
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
  touch(clip->clip.id);
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
  for (const ClipRef& clip : clips) {
    touch(clip->clip.id);
    revealed_.remove(clip->clip.id);
  }
  QList<int> rows;
  if (query_.matchesAll()) {
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
