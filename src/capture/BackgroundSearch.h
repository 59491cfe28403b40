#pragma once

#include <functional>

#include "capture/HistorySearch.h"
#include "capture/MainThreadCalls.h"
#include "platform/StopToken.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// Searches the history on the queue "Nimbrel.search", so that nobody who types waits for it. Main thread.
class BackgroundSearch final {
 public:
  using Found = std::function<void(const FoundClips&)>;

  /// The database must outlive this.
  explicit BackgroundSearch(ClipDatabase& database);
  ~BackgroundSearch();
  BackgroundSearch(const BackgroundSearch&) = delete;
  BackgroundSearch& operator=(const BackgroundSearch&) = delete;

  /// Looks in a history and tells later what was found. Whoever asked before is not answered any more.
  void start(const ClipQuery& query, const HistorySnapshot& history, Found found);

  /// Leaves the question that is still open unanswered.
  void cancel();

  /// Whether an answer is still to come.
  [[nodiscard]] bool isRunning() const { return static_cast<bool>(found_); }

  /// *Waits* for the answer that is still to come, and tells it.
  void finish();

 private:
  ClipDatabase& database_;
  /// Who asked last; empty once answered.
  Found found_;
  int question_ = 0;
  StopSource stop_;
  MainThreadCalls calls_;
  // Last member, first to go: what it still runs uses all of the above.
  SerialQueue queue_;
};

}  // namespace nimbrel
