#pragma once

#include <QList>
#include <QObject>
#include <QUuid>

#include "capture/CaptureServices.h"
#include "capture/HistoryList.h"
#include "storage/ClipDatabase.h"

namespace nimbrel {

/// The history as it stands in memory, in the database and in files, changed in all three together: a file is
/// written before the row that names it and deleted after it. Each change is announced once, after the fact.
/// Main thread.
class ClipHistory final : public QObject {
  Q_OBJECT

 public:
  /// How much of a changed clip its row must learn.
  enum class Changed {
    /// Date, pin and expiry, which have columns of their own.
    columns,
    /// Anything else.
    everything,
  };

  /// Loads the history, *waiting* for the disk. Both outlive this.
  ClipHistory(ClipDatabase& database, SideFiles& files);

  [[nodiscard]] const HistoryList& items() const { return items_; }
  /// Grows with every change that search could see.
  [[nodiscard]] quint64 revision() const { return revision_; }

  [[nodiscard]] HistoryList::Place takePlace() { return items_.takePlace(); }

  void insert(ClipItem clip, HistoryList::Place place);
  /// Gives a clip a new value, its id unchanged, where it is.
  void change(qsizetype row, ClipItem clip, Changed what);
  /// The same, and moves it up to a place; a clip that is above that place already stays there.
  void moveUp(qsizetype row, ClipItem clip, Changed what, HistoryList::Place place);
  /// Removes clips, their rows and their files. The rows must be given last first.
  void remove(const QList<qsizetype>& rows);

  /// A clip that was taken out of the history, whose files are still there.
  struct Taken {
    ClipRef clip;
    HistoryList::Place place = 0;
  };
  /// Removes a clip and its row, and leaves it to the caller to have it back or to discard it.
  [[nodiscard]] Taken take(qsizetype row);
  /// Puts a clip back where it was; it must not be in the history.
  void putBack(const Taken& taken);
  /// Removes the files of a clip that was taken out.
  void discard(const Taken& taken);

  /// Removes what is beyond a capacity of unpinned clips.
  void trim(qsizetype capacity) { remove(items_.rowsBeyond(capacity)); }
  /// The rows of what has expired, last first.
  [[nodiscard]] QList<qsizetype> rowsExpiredAt(Timestamp moment) { return items_.rowsExpiredAt(moment); }
  /// Removes every clip that is not pinned.
  void clear() { trim(0); }

 Q_SIGNALS:
  void inserted(qsizetype row);
  void changed(qsizetype row);
  /// The clip at `from` changed and is now at `to`.
  void moved(qsizetype from, qsizetype to);
  /// The rows as they were before, last first, and their clips.
  void removed(const QList<qsizetype>& rows, const QList<ClipRef>& clips);

 private:
  /// Gives the clip at a row another value, in memory and in the database.
  void put(qsizetype row, ClipItem clip, Changed what);
  void insert(const ClipRef& clip, HistoryList::Place place);
  void dropUnusedRichFile(const ClipItem& before, const ClipItem& after);

  ClipDatabase& database_;
  SideFiles& files_;
  HistoryList items_;
  quint64 revision_ = 0;
};

}  // namespace nimbrel
