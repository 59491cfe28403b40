#pragma once

#include <QList>
#include <QUuid>
#include <optional>

#include "capture/ClipHistory.h"
#include "capture/PasteQueue.h"

namespace nimbrel {

/// The clips that the user deleted a moment ago and may want back: out of the history and the database, with
/// their files still there. Main thread.
class RemovedClips final {
 public:
  /// Both must outlive this.
  RemovedClips(ClipHistory& history, PasteQueue& queue) : history_(history), queue_(queue) {}
  ~RemovedClips() { discard(); }
  RemovedClips(const RemovedClips&) = delete;
  RemovedClips& operator=(const RemovedClips&) = delete;

  [[nodiscard]] bool isEmpty() const { return removed_.isEmpty(); }

  /// Takes a clip out of the history. A secret, and one that expires, goes for good, which it says by false.
  bool remove(qsizetype row);

  /// Puts the one that was taken out last back where it was, also in the queue, and gives its id; nothing
  /// when there is none. When the same has been copied meanwhile, that clip becomes what the other was, and
  /// its id is given.
  std::optional<QUuid> restore();

  /// Lets all of them go for good.
  void discard();

 private:
  struct Removed {
    ClipHistory::Taken taken;
    /// Its place in the paste queue, −1 when it was not there.
    qsizetype queuePosition = -1;
  };

  /// The clip with the same content that is in the history.
  [[nodiscard]] std::optional<qsizetype> rowOfTwin(const ClipItem& clip) const;
  /// Keeps a clip as another one was kept.
  void keepLike(qsizetype row, const ClipItem& other);

  ClipHistory& history_;
  PasteQueue& queue_;
  QList<Removed> removed_;
};

}  // namespace nimbrel
