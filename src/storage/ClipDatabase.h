#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "capture/model/ClipItem.h"
#include "capture/model/IndexedClip.h"
#include "storage/ClipIndex.h"
#include "storage/HistoryCipher.h"
#include "storage/SQLiteConnection.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// What loading gave.
struct LoadedHistory final {
  /// Newest first.
  QList<ClipRef> clips;
  /// Rows that could not be opened or decoded; they stay in the file.
  qsizetype unreadableCount = 0;
  /// Whether all rows were there to be read, in a database that could be opened.
  bool complete = true;
};

/// Keeps the clips in one SQLite file, their payloads sealed, and a full-text index of them in memory, which
/// is the only place where searchable plain text exists.
///
/// Disk work runs on the queue "Nimbrel.db.disk", index work on "Nimbrel.db.index"; methods marked *waits*
/// wait for their queue, all others return at once. Failures are logged and absorbed: without a database,
/// writes are dropped and reads give nothing; without an index, searches give no answer. A write that fails
/// is remembered and done as soon as writing works again. Methods are called by
/// one thread at a time, except where they say otherwise.
class ClipDatabase final {
 public:
  /// Opens the file, created for its owner alone (0600) if missing, and migrates it; *waits*. A file that
  /// cannot be opened, or that a newer version of the program has written, is left as it is. The cipher must
  /// outlive this.
  ClipDatabase(const QString& path, HistoryCipher& cipher);
  ~ClipDatabase();
  ClipDatabase(const ClipDatabase&) = delete;
  ClipDatabase& operator=(const ClipDatabase&) = delete;

  /// All clips; *waits*.
  [[nodiscard]] LoadedHistory loadAll();

  /// The number of rows, 0 when it cannot be told; *waits*.
  [[nodiscard]] qint64 count();

  /// Writes a clip's row, new or changed, and indexes it.
  void save(const ClipRef& clip);

  /// Writes many rows in one transaction: all of them (true) or none (false). *Waits*. The caller then
  /// rebuilds the index.
  [[nodiscard]] bool saveMany(const QList<ClipItem>& clips);

  /// Writes a clip's date, pin and expiry; its payload stays as it is.
  void update(const ClipRef& clip);

  /// How thoroughly a deletion cleans up after itself.
  enum class Traces {
    /// Deleted content may stay in the write-ahead log until the next checkpoint.
    mayLinger,
    /// The write-ahead log is emptied afterwards, again and again while a reader prevents it.
    erase,
  };

  /// Deletes rows and their index entries; an empty list queues no work. `removed` is called on the disk's
  /// queue once the rows are gone, which is when what they refer to may go.
  void remove(const QList<QUuid>& ids, Traces traces, std::function<void()> removed = {});

  /// Calls something on the disk's queue when all that was asked for so far is written, or has failed and
  /// waits to be tried again; then only after that.
  void afterWrites(std::function<void()> task);

  /// Tries the writes again that failed so far, silently. Costs nothing when there are none.
  void retryFailedWrites();

  /// Puts a clip into the index, or takes it out when it has no search body any more.
  void index(const ClipRef& clip);

  /// Fills the index with exactly these clips. Until it is done, searches give no answer.
  void rebuildIndex(const QList<ClipRef>& clips);

  /// As `ClipIndex::search`; *waits*.
  [[nodiscard]] std::optional<QSet<QUuid>> search(const QList<QByteArray>& terms);

  /// The names of the files that rows refer to; *waits*. Nothing when they cannot be told, and then no file
  /// may be deleted. Any thread.
  [[nodiscard]] std::optional<QSet<QString>> referencedImageFiles();
  [[nodiscard]] std::optional<QSet<QString>> referencedRichFiles();

  /// Folds the write-ahead log into the file, safe from a power cut, and empties it; *waits*. False when that
  /// failed or another process is reading.
  bool checkpoint();

  /// Lets everything that was queued so far finish; *waits*.
  void flush();

 private:
  struct Removal {
    QList<QUuid> ids;
    Traces traces;
    std::function<void()> removed;
  };

  void openDisk();
  void write(const ClipRef& clip);
  void erase(const Removal& removal);
  void eraseTraces();
  [[nodiscard]] static bool succeeds(const std::function<void()>& attempt);
  void remember(const ClipRef& clip);
  void noteFailures();
  void writeWhatFailed();
  [[nodiscard]] std::optional<QSet<QString>> referencedFiles(const char* sql, const char* message);

  const QString url_;
  HistoryCipher& cipher_;
  std::unique_ptr<SQLiteConnection> disk_;
  /// What is still to be written, and what is still to be deleted, since it failed. Of the disk's queue.
  QHash<QUuid, ClipRef> unwritten_;
  QList<Removal> undeleted_;
  QList<std::function<void()>> waitingForWrites_;
  /// Deleted content is still in the write-ahead log.
  bool hasTraces_ = false;
  std::atomic<bool> hasFailures_ = false;
  ClipIndex index_;
  // Last member, first to go: the queue finishes its work while the connection still exists.
  SerialQueue diskQueue_;
};

}  // namespace nimbrel
