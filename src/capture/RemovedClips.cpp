#include "capture/RemovedClips.h"

namespace nimbrel {

void RemovedClips::remove(qsizetype row) {
  const ClipItem& clip = history_.items().at(row)->clip;
  if (clip.isSensitive() || clip.expiresAt) return history_.remove({row});
  const qsizetype position = queue_.ids().indexOf(clip.id);
  removed_.append({history_.take(row), position});
}

std::optional<QUuid> RemovedClips::restore() {
  if (removed_.isEmpty()) return std::nullopt;
  const Removed last = removed_.takeLast();
  const QUuid id = last.taken.clip->clip.id;
  if (last.queuePosition >= 0) queue_.insert(last.queuePosition, id);
  history_.putBack(last.taken);
  return id;
}

void RemovedClips::discard() {
  for (const Removed& removed : std::exchange(removed_, {}))
    history_.discard(removed.taken);
}

}  // namespace nimbrel
