#include "capture/HistoryList.h"

#include <algorithm>

namespace nimbrel {

HistoryList::HistoryList(const QList<ClipRef>& clips) {
  slots_.reserve(clips.size());
  QSet<QUuid> seen;
  seen.reserve(clips.size());
  for (const ClipRef& clip : clips) {
    if (seen.contains(clip->clip.id)) continue;
    seen.insert(clip->clip.id);
    note(*clip);
    slots_.append({clip->clip.id, clip});
  }
}

QList<ClipRef> HistoryList::clips() const {
  QList<ClipRef> all;
  all.reserve(slots_.size());
  for (const Slot& slot : slots_)
    all.append(slot.clip);
  return all;
}

std::optional<qsizetype> HistoryList::rowOf(const QUuid& id) const {
  const auto found =
      std::find_if(slots_.begin(), slots_.end(), [&](const Slot& slot) { return slot.id == id; });
  if (found == slots_.end()) return std::nullopt;
  return found - slots_.begin();
}

std::optional<qsizetype> HistoryList::rowOfHash(const QString& textHash, bool file) const {
  std::optional<qsizetype> first;
  for (auto [it, end] = byTextHash_.equal_range(textHash); it != end; ++it) {
    const auto row = rowOf(*it);
    if (row && slots_.at(*row).clip->clip.isFile() == file && (!first || *row < *first)) first = row;
  }
  return first;
}

std::optional<qsizetype> HistoryList::rowOfText(const QString& text, const QString& textHash) const {
  if (const auto row = rowOfHash(textHash, false)) return row;
  if (unhashed_ == 0) return std::nullopt;
  const auto found = std::find_if(slots_.begin(), slots_.end(), [&](const Slot& slot) {
    const ClipItem& clip = slot.clip->clip;
    return clip.isText() && !clip.textHash && clip.text == text;
  });
  if (found == slots_.end()) return std::nullopt;
  return found - slots_.begin();
}

std::optional<qsizetype> HistoryList::rowOfFiles(const QString& urls, const QString& textHash) const {
  const auto row = rowOfHash(textHash, true);
  if (row && slots_.at(*row).clip->clip.fileURLString == urls) return row;
  return std::nullopt;
}

std::optional<qsizetype> HistoryList::rowOfImage(const QString& imageHash) const {
  const auto found = byImageHash_.constFind(imageHash);
  if (found == byImageHash_.constEnd()) return std::nullopt;
  return rowOf(*found);
}

void HistoryList::insertAtTop(ClipRef clip) {
  note(*clip);
  const QUuid id = clip->clip.id;
  slots_.prepend({id, std::move(clip)});
}

void HistoryList::replace(qsizetype row, ClipRef clip) {
  forget(*slots_.at(row).clip);
  note(*clip);
  slots_[row].clip = std::move(clip);
}

void HistoryList::replaceAtTop(qsizetype row, ClipRef clip) {
  replace(row, std::move(clip));
  slots_.move(row, 0);
}

void HistoryList::removeAt(qsizetype row) {
  forget(*slots_.at(row).clip);
  slots_.removeAt(row);
}

QList<qsizetype> HistoryList::rowsBeyond(qsizetype capacity) const {
  QList<qsizetype> rows;
  qsizetype excess = unpinned_ - std::max<qsizetype>(capacity, 0);
  for (qsizetype row = slots_.size() - 1; row >= 0 && excess > 0; --row) {
    if (slots_.at(row).clip->clip.pinned) continue;
    rows.append(row);
    --excess;
  }
  return rows;
}

QList<qsizetype> HistoryList::rowsExpiredAt(Timestamp moment) {
  QList<qsizetype> rows;
  if (!earliestExpiry_ || *earliestExpiry_ > moment) return rows;
  earliestExpiry_.reset();
  for (qsizetype row = slots_.size() - 1; row >= 0; --row) {
    const ClipItem& clip = slots_.at(row).clip->clip;
    if (clip.pinned || !clip.expiresAt) continue;
    if (*clip.expiresAt <= moment) rows.append(row);
    earliestExpiry_ = earliestExpiry_ ? std::min(*earliestExpiry_, *clip.expiresAt) : *clip.expiresAt;
  }
  return rows;
}

void HistoryList::note(const IndexedClip& indexed) {
  const ClipItem& clip = indexed.clip;
  if (clip.textHash && !clip.isImage()) byTextHash_.insert(*clip.textHash, clip.id);
  if (clip.imageHash) byImageHash_.insert(*clip.imageHash, clip.id);
  if (clip.isText() && !clip.textHash) ++unhashed_;
  if (clip.pinned) return;
  ++unpinned_;
  if (clip.expiresAt)
    earliestExpiry_ = earliestExpiry_ ? std::min(*earliestExpiry_, *clip.expiresAt) : *clip.expiresAt;
}

void HistoryList::forget(const IndexedClip& indexed) {
  const ClipItem& clip = indexed.clip;
  if (clip.textHash && !clip.isImage()) byTextHash_.remove(*clip.textHash, clip.id);
  if (clip.imageHash) byImageHash_.remove(*clip.imageHash, clip.id);
  if (clip.isText() && !clip.textHash) --unhashed_;
  if (!clip.pinned) --unpinned_;
}

}  // namespace nimbrel
