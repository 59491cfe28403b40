#pragma once

#include <QList>
#include <QObject>
#include <QTimer>
#include <QUuid>
#include <chrono>
#include <functional>
#include <optional>

#include "capture/Background.h"
#include "capture/BackgroundSearch.h"
#include "capture/CaptureServices.h"
#include "capture/ClipExaminer.h"
#include "capture/ClipHistory.h"
#include "capture/ClipRecorder.h"
#include "capture/HistorySearch.h"
#include "capture/PasteQueue.h"
#include "capture/RemovedClips.h"
#include "capture/Thumbnails.h"
#include "capture/model/SnippetPlaceholders.h"
#include "capture/transforms/TextTransform.h"
#include "platform/Clock.h"
#include "platform/ImageCodec.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "settings/model/SettingsValues.h"
#include "storage/ClipDatabase.h"

namespace nimbrel {

/// What the store works with; everything outlives it.
struct ClipboardStoreParts final {
  const SettingsValues& settings;
  Pasteboard& pasteboard;
  const Workspace& workspace;
  const Clock& clock;
  ClipDatabase& database;
  TextGrader& grader;
  SideFiles& files;
  ImageCodec& images;
  ImageTextQueue& imageTexts;
  /// Makes the id of a new clip.
  std::function<QUuid()> makeId;
};

/// The single owner of the history, as the interface and the automation see it: watches the pasteboard, keeps
/// the clips and the paste queue, writes clips back, and announces each change once, after the fact. Main
/// thread.
class ClipboardStore final : public QObject {
  Q_OBJECT

 public:
  /// Loads the history, *waiting* for the disk, and starts to watch. What is on the pasteboard by then is not
  /// captured.
  explicit ClipboardStore(const ClipboardStoreParts& parts);
  ~ClipboardStore() override;

  /// The history, newest first.
  [[nodiscard]] const HistoryList& items() const { return history_.items(); }

  /// Grows with every change that search could see.
  [[nodiscard]] quint64 revision() const { return history_.revision(); }

  /// The clips that match a query, in history order.
  [[nodiscard]] QList<ClipRef> search(const QString& query) {
    return search_.find(query, history_.items(), history_.revision());
  }

  /// The same without keeping anybody waiting: each who asks is told in turn, while the store exists, of the
  /// first `most` that are wanted, by a function of any thread, and that still are by then.
  void searchInBackground(const QString& query, bool (*wanted)(const ClipItem&), qsizetype most,
                          std::function<void(const QList<ClipRef>&)> found);

  /// Searches for one who types, and is answered the last question only.
  [[nodiscard]] BackgroundSearch& backgroundSearch() { return backgroundSearch_; }

  /// The files of all clips.
  [[nodiscard]] SideFileNames filesInUse() const;

  /// The pictures of image clips.
  [[nodiscard]] Thumbnails& thumbnails() { return thumbnails_; }

  /// What rows tell of long texts.
  [[nodiscard]] ClipExaminer& examiner() { return examiner_; }

  /// Puts a clip on the pasteboard, with or without its formatting, so that capture ignores it. False when
  /// nothing could be written.
  bool copyToPasteboard(const ClipItem& clip, bool plainOnly);

  /// The same with the text recognised in an image; false when there is none.
  bool copyRecognizedText(const ClipItem& clip);

  /// What a clip gives to another program: as it would be put on the pasteboard, with its formatting. *Waits*
  /// for the disk when the clip has a file.
  [[nodiscard]] PasteboardContent contentOf(const ClipItem& clip) const;

  /// A text clip's text, its placeholders expanded, transformed; nothing when the transform does not apply to
  /// it or the clip is no text.
  [[nodiscard]] std::optional<QString> transformedText(const ClipItem& clip, TextTransform transform) const;

  /// Puts a text on the pasteboard that was made of a clip, so that capture ignores it. False when it could
  /// not be written.
  bool copyTextMadeOf(const ClipItem& clip, const QString& text);

  /// The plain text on the pasteboard, as far as it has been read.
  [[nodiscard]] std::optional<QString> pasteboardText() const { return parts_.pasteboard.currentText(); }

  /// Records a text received from another device; a blank one is ignored.
  void addRemoteText(const QString& text, RemoteDeviceType device);

  void removeClip(const QUuid& id);

  /// Removes a clip that the user may want back, and says whether it can be had back: a secret, and a clip
  /// that expires, goes for good.
  bool removeClipForNow(const QUuid& id);
  /// Whether there is a clip to be had back.
  [[nodiscard]] bool canUndoRemoval() const { return !removed_.isEmpty(); }
  /// Brings back the clip that was removed last, also into a full history, and gives its id. The next capture
  /// trims what is too much.
  std::optional<QUuid> undoRemoval();
  /// What was removed is gone for good.
  void settleRemovals() { removed_.discard(); }

  /// Removes every clip that is not pinned, and what has been copied and is not among them yet.
  void clearHistory();

  /// Pins or unpins a clip; a pinned clip never expires, and unpinning does not give its expiry back.
  void togglePin(const QUuid& id);

  /// Puts a clip into a collection, which pins it, or takes it out with no name or a blank one, which leaves
  /// it pinned.
  void setCollection(const QUuid& id, const std::optional<QString>& name);

  /// The applications, and other devices, that the clips come from, each once, in the order of the user's
  /// language.
  [[nodiscard]] QList<SourceApp> sourceApps() const;

  /// The names of the collections that have clips, each once, in the order of the user's language.
  [[nodiscard]] QStringList collections() const;

  /// The clips to paste one after the other, in the order in which they were queued.
  [[nodiscard]] const QList<QUuid>& queuedIDs() const { return queue_.ids(); }
  [[nodiscard]] bool isQueued(const QUuid& id) const { return queue_.contains(id); }
  /// Puts a clip at the end of the queue, unless it is there already.
  void addToQueue(const QUuid& id);
  void removeFromQueue(const QUuid& id);

  /// Removes the oldest clips that are more than the history may hold by now.
  void trimToCapacity();

  /// Looks for the text of the images that have none, or stops looking, as is chosen by now.
  void recognitionSwitched();

  /// Has of what is copied from now on that read which is wanted by now: formats or none, nothing of what
  /// ignored applications copy, and nothing while capture is paused. What is kept stays.
  void renewReadPolicy();

  /// Queues those of these clips that are images without recognised text: what was interrupted.
  void recognizeTexts(const QList<QUuid>& ids);

  [[nodiscard]] bool isPaused() const { return paused_; }
  void setPaused(bool paused);

  /// One look at the pasteboard; runs twice a second and whenever the pasteboard announces a change.
  void tick();

  /// Removes the clips that have expired, and an expired secret from the pasteboard while it is still there.
  void sweepExpired();

 Q_SIGNALS:
  /// A clip is new at `row`.
  void clipInserted(qsizetype row);
  /// The clip at `from` changed and is now at `to`.
  void clipMoved(qsizetype from, qsizetype to);
  /// The clip at `row` changed in place.
  void clipChanged(qsizetype row);
  /// Clips are gone: the rows as they were before, last first, and what was there.
  void clipsRemoved(const QList<qsizetype>& rows, const QList<ClipRef>& clips);
  /// The queue has changed and holds so many clips now.
  void queueChanged(qsizetype count);
  void pauseChanged(bool paused);

 private:
  void recognizeMissingTexts();
  void captureAll(const QList<PasteboardSnapshot>& snapshots);
  [[nodiscard]] bool wasPausedAt(std::optional<std::chrono::steady_clock::time_point> moment) const;
  bool write(const PasteboardContent& content);
  [[nodiscard]] SnippetValues snippetValues() const;
  void forget(const QList<qsizetype>& rows, const QList<ClipRef>& clips);
  void setRecognizedText(const QUuid& id, const QString& text);
  void retryFailedWrites();

  ClipboardStoreParts parts_;
  ClipHistory history_;
  Thumbnails thumbnails_;
  ClipExaminer examiner_;
  ClipRecorder recorder_;
  HistorySearch search_;
  PasteQueue queue_;
  RemovedClips removed_;
  BackgroundSearch backgroundSearch_;
  qint64 lastChange_ = 0;
  bool paused_ = false;
  /// When capture was last paused or resumed.
  std::optional<std::chrono::steady_clock::time_point> pauseSwitched_;
  std::chrono::steady_clock::time_point lastRetry_;
  Background lookups_{QStringLiteral("Nimbrel.lookups")};
  QTimer timer_;
};

}  // namespace nimbrel
