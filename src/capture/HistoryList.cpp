#include "capture/HistoryList.h"

#include <algorithm>

namespace nimbrel {

HistoryList::HistoryList(const QList<ClipRef>& clips) {
  slots_.reserve(clips.size());
  places_.reserve(clips.size());
  lastPlace_ = static_cast<Place>(clips.size());
  Place place = lastPlace_;
  for (const ClipRef& clip : clips) {
    if (places_.contains(clip->clip.id)) continue;
    places_.insert(clip->clip.id, place);
    note(*clip, place);
    slots_.append({place--, clip});
  }
}

QList<ClipRef> HistoryList::clips() const {
  QList<ClipRef> all;
  all.reserve(slots_.size());
  for (const Slot& slot : slots_)
    all.append(slot.clip);
  return all;
}

HistorySnapshot HistoryList::snapshot() const {
  return HistorySnapshot(*this);
}

qsizetype HistoryList::rowFor(Place place) const {
  return std::lower_bound(slots_.begin(), slots_.end(), place,
                          [](const Slot& slot, Place wanted) { return slot.place > wanted; }) -
         slots_.begin();
}

std::optional<qsizetype> HistoryList::rowOf(const QUuid& id) const {
  const auto place = places_.constFind(id);
  if (place == places_.constEnd()) return std::nullopt;
  return rowFor(*place);
}

std::optional<qsizetype> HistoryList::firstRow(const QMultiHash<QString, QUuid>& table, const QString& hash,
                                               bool file) const {
  std::optional<qsizetype> first;
  for (auto [it, end] = table.equal_range(hash); it != end; ++it) {
    const auto row = rowOf(*it);
    if (row && slots_.at(*row).clip->clip.isFile() == file && (!first || *row < *first)) first = row;
  }
  return first;
}

std::optional<qsizetype> HistoryList::rowOfText(const QString& text, const QString& textHash) const {
  if (const auto row = firstRow(byTextHash_, textHash, false)) return row;
  if (unhashed_ == 0) return std::nullopt;
  const auto found = std::find_if(slots_.begin(), slots_.end(), [&](const Slot& slot) {
    const ClipItem& clip = slot.clip->clip;
    return clip.isText() && !clip.textHash && clip.text == text;
  });
  if (found == slots_.end()) return std::nullopt;
  return found - slots_.begin();
}

std::optional<qsizetype> HistoryList::rowOfFiles(const QString& urls, const QString& textHash) const {
  const auto row = firstRow(byTextHash_, textHash, true);
  if (row && slots_.at(*row).clip->clip.fileURLString == urls) return row;
  return std::nullopt;
}

std::optional<qsizetype> HistoryList::rowOfImage(const QString& imageHash) const {
  return firstRow(byImageHash_, imageHash, false);
}

qsizetype HistoryList::insert(ClipRef clip, Place place) {
  note(*clip, place);
  places_.insert(clip->clip.id, place);
  const qsizetype row = rowFor(place);
  slots_.insert(row, {place, std::move(clip)});
  return row;
}

void HistoryList::replace(qsizetype row, ClipRef clip) {
  const Place place = placeAt(row);
  forget(*slots_.at(row).clip, place);
  note(*clip, place);
  slots_[row].clip = std::move(clip);
}

qsizetype HistoryList::move(qsizetype row, Place place) {
  Slot slot = slots_.takeAt(row);
  if (unpinned_.erase(slot.place) > 0) unpinned_.insert(place);
  slot.place = place;
  places_.insert(slot.clip->clip.id, place);
  const qsizetype target = rowFor(place);
  slots_.insert(target, std::move(slot));
  return target;
}

void HistoryList::removeAt(qsizetype row) {
  forget(*slots_.at(row).clip, placeAt(row));
  places_.remove(slots_.at(row).clip->clip.id);
  slots_.removeAt(row);
}

QList<qsizetype> HistoryList::rowsBeyond(qsizetype capacity) const {
  QList<qsizetype> rows;
  auto oldest = unpinned_.begin();
  for (auto excess = static_cast<qsizetype>(unpinned_.size()) - capacity;
       excess > 0 && oldest != unpinned_.end(); --excess)
    rows.append(rowFor(*oldest++));
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

void HistoryList::note(const IndexedClip& indexed, Place place) {
  const ClipItem& clip = indexed.clip;
  if (clip.textHash && !clip.isImage()) byTextHash_.insert(*clip.textHash, clip.id);
  if (clip.imageHash) byImageHash_.insert(*clip.imageHash, clip.id);
  if (clip.isText() && !clip.textHash) ++unhashed_;
  if (clip.pinned) return;
  unpinned_.insert(place);
  if (clip.expiresAt)
    earliestExpiry_ = earliestExpiry_ ? std::min(*earliestExpiry_, *clip.expiresAt) : *clip.expiresAt;
}

void HistoryList::forget(const IndexedClip& indexed, Place place) {
  const ClipItem& clip = indexed.clip;
  if (clip.textHash && !clip.isImage()) byTextHash_.remove(*clip.textHash, clip.id);
  if (clip.imageHash) byImageHash_.remove(*clip.imageHash, clip.id);
  if (clip.isText() && !clip.textHash) --unhashed_;
  unpinned_.erase(place);
}

}  // namespace nimbrel
