#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QUuid>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include "capture/model/IndexedClip.h"
#include "storage/SQLiteConnection.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// The full-text index of the clips, in memory: the only place where searchable plain text exists. Works on
/// the queue "Nimbrel.db.index"; methods marked *waits* wait for it, all others return at once. Failures are
/// logged and absorbed: without an index, searches give no answer. All methods belong to the main thread.
class ClipIndex final {
 public:
  /// Makes an empty index; *waits*.
  ClipIndex();
  ~ClipIndex();
  ClipIndex(const ClipIndex&) = delete;
  ClipIndex& operator=(const ClipIndex&) = delete;

  /// Puts a clip in, or takes it out when it has no search body any more.
  void put(const ClipRef& clip);

  /// Takes clips out. While many are going, searches give no answer.
  void remove(const QList<QUuid>& ids);

  /// Fills the index with exactly these clips. Until it is done, searches give no answer.
  void rebuild(const QList<ClipRef>& clips);

  /// The ids of the clips whose body contains every one of the folded terms, each of three characters or
  /// more; *waits*. Nothing when the index cannot answer, and when the terms are so common that looking at
  /// every clip is faster than listing those that match.
  [[nodiscard]] std::optional<QSet<QUuid>> search(const QList<QByteArray>& terms);

  /// Lets everything that was queued so far finish; *waits*.
  void flush();

 private:
  using RowId = std::int64_t;

  void open();
  /// Inside a transaction: the row is gone, respectively there.
  void erase(const QUuid& id);
  void insert(const IndexedClip& clip);
  void removeFew(const QList<QUuid>& ids);
  void removeMost(const QSet<QUuid>& ids);

  std::unique_ptr<SQLiteConnection> index_;
  /// Where each clip's row is: an FTS5 table finds no row by a column without reading them all.
  QHash<QUuid, RowId> rows_;
  RowId lastRow_ = 0;
  /// Rebuilds and large removals that have been asked for and are not finished.
  std::atomic<int> pendingRebuilds_ = 0;
  // Last member, first to go: the queue finishes its work while the connection still exists.
  SerialQueue queue_;
};

}  // namespace nimbrel
