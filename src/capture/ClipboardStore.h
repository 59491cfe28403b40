#pragma once

#include <QList>
#include <QObject>
#include <QTimer>
#include <QUuid>
#include <chrono>
#include <functional>
#include <optional>

#include "capture/CaptureDecision.h"
#include "capture/CaptureServices.h"
#include "capture/HistoryList.h"
#include "capture/HistorySearch.h"
#include "platform/Clock.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "settings/model/AppSettings.h"
#include "storage/ClipDatabase.h"

namespace nimbrel {

/// What the store works with; everything outlives it.
struct ClipboardStoreParts final {
  const AppSettings& settings;
  Pasteboard& pasteboard;
  const Workspace& workspace;
  const Clock& clock;
  ClipDatabase& database;
  const TextGrader& grader;
  SideFiles& files;
  ImageTextQueue& imageTexts;
  /// Makes the id of a new clip.
  std::function<QUuid()> makeId;
};

/// The single owner of the history: watches the pasteboard, keeps the clips, writes them back, and announces
/// each change once, after the fact. Main thread.
class ClipboardStore final : public QObject {
  Q_OBJECT

 public:
  /// Loads the history, *waiting* for the disk, and starts to watch. What is on the pasteboard by then is not
  /// captured.
  explicit ClipboardStore(const ClipboardStoreParts& parts);
  ~ClipboardStore() override;

  /// The history, newest first.
  [[nodiscard]] const HistoryList& items() const { return history_; }

  /// Grows with every change that search could see.
  [[nodiscard]] quint64 revision() const { return revision_; }

  /// The clips that match a query, in history order; valid until the next call.
  [[nodiscard]] const QList<ClipRef>& search(const QString& query) {
    return search_.find(query, history_, revision_);
  }

  /// Puts a clip on the pasteboard, with or without its formatting, so that capture ignores it. False when
  /// nothing could be written.
  bool copyToPasteboard(const ClipItem& clip, bool plainOnly);

  /// The plain text on the pasteboard, as far as it has been read.
  [[nodiscard]] std::optional<QString> pasteboardText() const { return parts_.pasteboard.currentText(); }

  /// Records a text received from another device; a blank one is ignored.
  void addRemoteText(const QString& text, RemoteDeviceType device);

  void removeClip(const QUuid& id);

  /// Pins or unpins a clip; a pinned clip never expires, and unpinning does not give its expiry back.
  void togglePin(const QUuid& id);

  [[nodiscard]] bool isPaused() const { return paused_; }
  void setPaused(bool paused);

  /// One look at the pasteboard; runs twice a second and whenever the pasteboard announces a change.
  void tick();

  /// Removes the clips that have expired, and an expired secret from the pasteboard while it is still there.
  void sweepExpired();

 Q_SIGNALS:
  /// A clip is new at row 0.
  void clipInserted();
  /// The clip at `row` changed and is now at row 0.
  void clipMovedToTop(qsizetype row);
  /// The clip at `row` changed in place.
  void clipChanged(qsizetype row);
  /// The clip is gone.
  void clipRemoved(const QUuid& id);
  void pauseChanged(bool paused);

 private:
  void captureAll(const QList<PasteboardSnapshot>& snapshots);
  [[nodiscard]] bool wasPausedAt(std::optional<std::chrono::steady_clock::time_point> moment) const;
  void capture(const PasteboardSnapshot& snapshot);
  void record(const CaptureNothing& decision);
  void record(const CaptureFiles& decision);
  void record(const CaptureText& decision);
  void record(const CaptureImage& decision);

  [[nodiscard]] Timestamp now() const;
  [[nodiscard]] ClipItem newClip(const ClipSource& source) const;
  void insert(ClipItem clip);
  /// Moves a text clip that was copied again to the top; `fresh` is what a new clip of it would be.
  void recordAgain(qsizetype row, const ClipItem& fresh);
  void moveToTop(qsizetype row);
  void removeRows(const QList<qsizetype>& rows);
  void trim();

  ClipboardStoreParts parts_;
  HistoryList history_;
  HistorySearch search_;
  quint64 revision_ = 0;
  qint64 lastChange_ = 0;
  bool paused_ = false;
  /// When capture was last paused or resumed.
  std::optional<std::chrono::steady_clock::time_point> pauseSwitched_;
  QTimer timer_;
};

}  // namespace nimbrel
