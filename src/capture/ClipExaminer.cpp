#include "capture/ClipExaminer.h"

namespace nimbrel {

ClipExaminer::ClipExaminer()
    : queue_(QStringLiteral("Nimbrel.texts"), SerialQueue::Priority::userInitiated) {}

void ClipExaminer::examine(const ClipRef& clip) {
  if (clip->readyTraits() || asked_.contains(clip.get())) return;
  asked_.insert(clip.get());
  queue_.post([this, clip] {
    static_cast<void>(clip->traits());
    calls_.post([this, clip] {
      asked_.remove(clip.get());
      Q_EMIT examined(clip->clip.id);
    });
  });
}

}  // namespace nimbrel
