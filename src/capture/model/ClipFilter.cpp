#include "capture/model/ClipFilter.h"

namespace nimbrel {

std::optional<SourceApp> sourceAppOf(const ClipItem& clip) {
  if (!clip.sourceBundleID || !clip.sourceName || clip.sourceName->isEmpty()) return std::nullopt;
  return SourceApp{*clip.sourceBundleID, *clip.sourceName};
}

bool passesFilter(const ClipItem& clip, const ClipFilter& filter) {
  return passesKind(clip, filter.kind) && (!filter.app || sourceAppOf(clip) == filter.app) &&
         (!filter.collection || clip.collection == filter.collection);
}

}  // namespace nimbrel
