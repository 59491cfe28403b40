#include "capture/BackgroundSearch.h"

#include <utility>

namespace nimbrel {

BackgroundSearch::BackgroundSearch(ClipDatabase& database)
    : database_(database), queue_(QStringLiteral("Nimbrel.search"), SerialQueue::Priority::userInitiated) {}

BackgroundSearch::~BackgroundSearch() {
  cancel();
}

void BackgroundSearch::cancel() {
  stop_.request_stop();
  found_ = {};
  ++question_;
}

void BackgroundSearch::start(const ClipQuery& query, const HistorySnapshot& history, Found found) {
  cancel();
  stop_ = std::stop_source();
  found_ = std::move(found);
  queue_.post([this, query, history, question = question_, stop = stop_.get_token()] {
    if (stop.stop_requested()) return;
    const FoundClips clips = findClips(query, history, database_, stop);
    if (stop.stop_requested()) return;
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
