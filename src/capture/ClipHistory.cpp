#include "capture/ClipHistory.h"

#include "capture/model/Log.h"

namespace nimbrel {

ClipHistory::ClipHistory(ClipDatabase& database, SideFiles& files) : database_(database), files_(files) {
  const LoadedHistory loaded = database_.loadAll();
  if (loaded.unreadableCount > 0)
    qCCritical(clipboardLog, "%lld elementos ilegibles (se conservan en la base de datos)",
               static_cast<long long>(loaded.unreadableCount));
  items_ = HistoryList(loaded.clips);
  database_.rebuildIndex(loaded.clips);
}

void ClipHistory::insert(ClipItem clip, HistoryList::Place place) {
  insert(std::make_shared<const IndexedClip>(std::move(clip)), place);
}

void ClipHistory::insert(const ClipRef& clip, HistoryList::Place place) {
  const qsizetype row = items_.insert(clip, place);
  ++revision_;
  database_.save(clip);
  Q_EMIT inserted(row);
}

void ClipHistory::put(qsizetype row, ClipItem clip, Changed what) {
  const ClipRef before = items_.at(row);
  const auto indexed = std::make_shared<const IndexedClip>(std::move(clip), *before);
  items_.replace(row, indexed);
  if (what == Changed::columns) {
    database_.update(indexed);
  } else {
    ++revision_;
    database_.save(indexed);
  }
  dropUnusedRichFile(before->clip, indexed->clip);
}

void ClipHistory::change(qsizetype row, ClipItem clip, Changed what) {
  put(row, std::move(clip), what);
  Q_EMIT changed(row);
}

void ClipHistory::moveUp(qsizetype row, ClipItem clip, Changed what, HistoryList::Place place) {
  if (items_.placeAt(row) > place) return change(row, std::move(clip), what);
  put(row, std::move(clip), what);
  ++revision_;
  Q_EMIT moved(row, items_.move(row, place));
}

void ClipHistory::dropUnusedRichFile(const ClipItem& before, const ClipItem& after) {
  if (!before.richFile || before.richFile == after.richFile) return;
  database_.afterWrites([&files = files_, name = *before.richFile] { files.remove({.rich = {name}}); });
}

void ClipHistory::remove(const QList<qsizetype>& rows) {
  if (rows.isEmpty()) return;
  QList<ClipRef> clips;
  QList<QUuid> ids;
  SideFileNames names;
  bool sensitive = false;
  for (const qsizetype row : rows) {
    const ClipRef ref = items_.at(row);
    const ClipItem& clip = ref->clip;
    clips.append(ref);
    ids.append(clip.id);
    names += sideFilesOf(clip);
    sensitive = sensitive || clip.isSensitive() || clip.expiresAt;
    items_.removeAt(row);
  }
  ++revision_;
  // "Delete" means gone: many at once are a history that somebody wants cleared.
  const bool erase = sensitive || rows.size() > 1;
  database_.remove(ids, erase ? ClipDatabase::Traces::erase : ClipDatabase::Traces::mayLinger,
                   [&files = files_, names] { files.remove(names); });
  Q_EMIT removed(rows, clips);
}

ClipHistory::Taken ClipHistory::take(qsizetype row) {
  const Taken taken{items_.at(row), items_.placeAt(row)};
  items_.removeAt(row);
  ++revision_;
  database_.remove({taken.clip->clip.id}, ClipDatabase::Traces::mayLinger);
  Q_EMIT removed({row}, {taken.clip});
  return taken;
}

void ClipHistory::putBack(const Taken& taken) {
  insert(taken.clip, taken.place);
}

void ClipHistory::discard(const Taken& taken) {
  database_.afterWrites([&files = files_, names = sideFilesOf(taken.clip->clip)] { files.remove(names); });
}

}  // namespace nimbrel
