#include "capture/RemovedClips.h"

#include <utility>

#include "storage/ContentHash.h"

namespace nimbrel {

bool RemovedClips::remove(qsizetype row) {
  const ClipItem& clip = history_.items().at(row)->clip;
  if (clip.isSensitive() || clip.expiresAt) {
    history_.remove({row});
    return false;
  }
  const qsizetype position = queue_.ids().indexOf(clip.id);
  removed_.append({history_.take(row), position});
  return true;
}

std::optional<QUuid> RemovedClips::restore() {
  if (removed_.isEmpty()) return std::nullopt;
  const Removed last = removed_.takeLast();
  const ClipItem& clip = last.taken.clip->clip;
  const auto twin = rowOfTwin(clip);
  const QUuid id = twin ? history_.items().at(*twin)->clip.id : clip.id;
  if (last.queuePosition >= 0) queue_.insert(last.queuePosition, id);
  if (twin) {
    keepLike(*twin, clip);
    history_.discard(last.taken);
  } else {
    history_.putBack(last.taken);
  }
  return id;
}

std::optional<qsizetype> RemovedClips::rowOfTwin(const ClipItem& clip) const {
  const HistoryList& items = history_.items();
  if (clip.isImage()) return clip.imageHash ? items.rowOfImage(*clip.imageHash) : std::nullopt;
  const QString hash = clip.textHash.value_or(sha256Hex(clip.text.toUtf8()));
  return clip.fileURLString ? items.rowOfFiles(*clip.fileURLString, hash) : items.rowOfText(clip.text, hash);
}

void RemovedClips::keepLike(qsizetype row, const ClipItem& other) {
  const ClipItem& before = history_.items().at(row)->clip;
  ClipItem clip = before;
  if (!clip.collection) clip.collection = other.collection;
  if (other.pinned) {
    clip.pinned = true;
    clip.expiresAt.reset();
  }
  if (clip != before) history_.change(row, clip, ClipHistory::Changed::everything);
}

void RemovedClips::discard() {
  for (const Removed& removed : std::exchange(removed_, {}))
    history_.discard(removed.taken);
}

}  // namespace nimbrel
