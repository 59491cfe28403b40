#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
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
};

/// Keeps the clips in one SQLite file, their payloads sealed, and a full-text index of them in memory, which
/// is the only place where searchable plain text exists.
///
/// Disk work runs on the queue "Nimbrel.db.disk", index work on "Nimbrel.db.index"; methods marked *waits*
/// wait for their queue, all others return at once. Failures are logged and absorbed: without a database,
/// writes are dropped and reads give nothing; without an index, searches give no answer. All methods belong
/// to the main thread.
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
  void update(const ClipItem& clip);

  /// How thoroughly a deletion cleans up after itself.
  enum class Traces {
    /// Deleted content may stay in the write-ahead log until the next checkpoint.
    mayLinger,
    /// The write-ahead log is emptied afterwards, again and again while a reader prevents it.
    erase,
  };

  /// Deletes rows and their index entries; an empty list queues no work.
  void remove(const QList<QUuid>& ids, Traces traces);

  /// Puts a clip into the index, or takes it out when it has no search body any more.
  void index(const ClipRef& clip);

  /// Fills the index with exactly these clips. Until it is done, searches give no answer.
  void rebuildIndex(const QList<ClipRef>& clips);

  /// As `ClipIndex::search`; *waits*.
  [[nodiscard]] std::optional<QSet<QUuid>> search(const QList<QByteArray>& terms);

  /// The names of the files that rows refer to; *waits*. Nothing when they cannot be told, and then no file
  /// may be deleted.
  [[nodiscard]] std::optional<QSet<QString>> referencedImageFiles();
  [[nodiscard]] std::optional<QSet<QString>> referencedRichFiles();

  /// Folds the write-ahead log into the file and empties it; *waits*.
  void checkpoint();

  /// Lets everything that was queued so far finish; *waits*.
  void flush();

 private:
  void openDisk();
  void eraseTraces(int attemptsLeft);
  [[nodiscard]] std::optional<QSet<QString>> referencedFiles(const char* sql, const char* message);

  const QString url_;
  HistoryCipher& cipher_;
  std::unique_ptr<SQLiteConnection> disk_;
  ClipIndex index_;
  // Last member, first to go: the queue finishes its work while the connection still exists.
  SerialQueue diskQueue_;
};

}  // namespace nimbrel
