#include "capture/BackgroundSearch.h"

#include <utility>

namespace nimbrel {

BackgroundSearch::BackgroundSearch(ClipDatabase& database)
    : database_(database), queue_(QStringLiteral("Nimbrel.search"), SerialQueue::Priority::userInitiated) {}

BackgroundSearch::~BackgroundSearch() {
  cancel();
}

void BackgroundSearch::cancel() {
  stop_.requestStop();
  found_ = {};
  ++question_;
}

void BackgroundSearch::start(const ClipQuery& query, const HistorySnapshot& history, Found found) {
  cancel();
  stop_ = StopSource();
  found_ = std::move(found);
  queue_.post([this, query, history, question = question_, stop = stop_.token()] {
    if (stop.stopRequested()) return;
    const FoundClips clips = findClips(query, history, database_, stop);
    if (stop.stopRequested()) return;
    calls_.post([this, question, clips] {
      if (question == question_) std::exchange(found_, {})(clips);
    });
  });
}

void BackgroundSearch::finish() {
  if (!isRunning()) return;
  queue_.runAndWait([] {});
  calls_.deliver();
}

}  // namespace nimbrel
