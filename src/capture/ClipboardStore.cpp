#include "capture/ClipboardStore.h"

#include <QDateTime>
#include <QLocale>
#include <QPointer>
#include <QSet>
#include <algorithm>

#include "capture/CaptureDecision.h"
#include "capture/PasteboardWriting.h"
#include "capture/model/SnippetPlaceholders.h"
#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kPollInterval = 500ms;
/// How often writes that failed are tried again.
constexpr auto kRetryInterval = 10s;

/// In the order of the user's language, and never undecided about two different names.
bool comesBefore(const QString& a, const QString& b) {
  const int order = QString::localeAwareCompare(a, b);
  return order != 0 ? order < 0 : a < b;
}

}  // namespace

ClipboardStore::ClipboardStore(const ClipboardStoreParts& parts)
    : parts_(parts),
      history_(parts.database, parts.files),
      thumbnails_(parts.files, parts.images),
      recorder_({.settings = parts.settings,
                 .clock = parts.clock,
                 .grader = parts.grader,
                 .files = parts.files,
                 .imageTexts = parts.imageTexts,
                 .thumbnails = thumbnails_,
                 .makeId = parts.makeId},
                history_),
      search_(parts.database),
      removed_(history_, queue_),
      backgroundSearch_(parts.database),
      lastRetry_(parts.clock.steadyNow()) {
  renewReadPolicy();
  lastChange_ = parts_.pasteboard.changeCount();
  connect(&history_, &ClipHistory::inserted, this, &ClipboardStore::clipInserted);
  connect(&history_, &ClipHistory::moved, this, &ClipboardStore::clipMoved);
  connect(&history_, &ClipHistory::changed, this, &ClipboardStore::clipChanged);
  connect(&history_, &ClipHistory::removed, this, &ClipboardStore::forget);
  connect(&timer_, &QTimer::timeout, this, &ClipboardStore::tick);
  timer_.start(kPollInterval);
  parts_.imageTexts.setHandler([this](const QUuid& id, const QString& text) { setRecognizedText(id, text); });
  parts_.pasteboard.setChangeHandler([this] { tick(); });
}

ClipboardStore::~ClipboardStore() {
  parts_.pasteboard.setChangeHandler({});
  parts_.imageTexts.setHandler({});
}

void ClipboardStore::tick() {
  sweepExpired();
  retryFailedWrites();
  const qint64 change = parts_.pasteboard.changeCount();
  if (change == lastChange_) return;
  const auto snapshots = parts_.pasteboard.changesAfter(lastChange_);
  lastChange_ = change;
  captureAll(snapshots);
}

void ClipboardStore::captureAll(const QList<PasteboardSnapshot>& snapshots) {
  for (const PasteboardSnapshot& snapshot : snapshots) {
    if (wasPausedAt(snapshot.changedAt)) continue;
    const auto front = snapshot.frontApplication ? std::nullopt : parts_.workspace.frontmostApplication();
    recorder_.record(decideCapture(snapshot, front, parts_.settings));
  }
}

bool ClipboardStore::wasPausedAt(std::optional<std::chrono::steady_clock::time_point> moment) const {
  // Reading takes time: what was copied on one side of the switch may be ready only on the other.
  const bool beforeSwitch = moment && pauseSwitched_ && *moment < *pauseSwitched_;
  return beforeSwitch ? !paused_ : paused_;
}

void ClipboardStore::retryFailedWrites() {
  const auto now = parts_.clock.steadyNow();
  if (now - lastRetry_ < kRetryInterval) return;
  lastRetry_ = now;
  parts_.database.retryFailedWrites();
}

bool ClipboardStore::copyToPasteboard(const ClipItem& clip, bool plainOnly) {
  return write(pasteboardContentOf(clip, plainOnly, parts_.files, snippetValues()));
}

SnippetValues ClipboardStore::snippetValues() const {
  const double seconds = unixSeconds(parts_.clock.now());
  return {.now = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000)),
          .locale = QLocale::system(),
          .clipboard = std::nullopt};
}

PasteboardContent ClipboardStore::contentOf(const ClipItem& clip) const {
  return pasteboardContentOf(clip, false, parts_.files, snippetValues());
}

std::optional<QString> ClipboardStore::transformedText(const ClipItem& clip, TextTransform transform) const {
  if (!clip.isText()) return std::nullopt;
  return apply(transform, expandSnippets(clip, snippetValues()));
}

bool ClipboardStore::copyTextMadeOf(const ClipItem& clip, const QString& text) {
  PasteboardContent content;
  content.text = text;
  content.concealed = clip.isSensitive();
  return write(content);
}

bool ClipboardStore::copyRecognizedText(const ClipItem& clip) {
  if (!clip.ocrText || clip.ocrText->isEmpty()) return false;
  return copyTextMadeOf(clip, *clip.ocrText);
}

bool ClipboardStore::write(const PasteboardContent& content) {
  if (content.isEmpty()) {
    // What the user asked for is gone; what was there before, a secret perhaps, must not be pasted in its
    // place.
    if (const auto change = parts_.pasteboard.clearIfUnchanged(lastChange_)) lastChange_ = *change;
    return false;
  }
  const auto change = parts_.pasteboard.write(content);
  if (!change) return false;
  // Somebody's copy that is ready but not looked at yet must not be taken for part of this write.
  const auto missed = parts_.pasteboard.changesAfter(lastChange_);
  lastChange_ = *change;
  captureAll(missed);
  return true;
}

void ClipboardStore::addRemoteText(const QString& text, RemoteDeviceType device) {
  if (trimmedWhitespace(text).isEmpty()) return;
  recorder_.record(CaptureText{.text = text, .rich = std::nullopt, .source = remoteSource(device)});
}

void ClipboardStore::searchInBackground(const QString& query, bool (*wanted)(const ClipItem&), qsizetype most,
                                        std::function<void(const QList<ClipRef>&)> found) {
  const auto look = [query, wanted, most, history = items().snapshot(), &database = parts_.database] {
    QList<QUuid> ids;
    const auto clips = clipsMatching(query, history, database);
    for (auto clip = clips.begin(); clip != clips.end() && ids.size() < most; ++clip) {
      if (wanted((*clip)->clip)) ids.append((*clip)->clip.id);
    }
    return ids;
  };
  lookups_.run(look, [this, wanted, found = std::move(found)](const QList<QUuid>& ids) {
    QList<ClipRef> clips = clipsOf(ids, items());
    clips.removeIf([wanted](const ClipRef& clip) { return !wanted(clip->clip); });
    found(clips);
  });
}

SideFileNames ClipboardStore::filesInUse() const {
  SideFileNames names;
  for (qsizetype row = 0; row < items().size(); ++row)
    names += sideFilesOf(items().at(row)->clip);
  return names;
}

void ClipboardStore::removeClip(const QUuid& id) {
  if (const auto row = items().rowOf(id)) history_.remove({*row});
}

bool ClipboardStore::removeClipForNow(const QUuid& id) {
  const auto row = items().rowOf(id);
  return row && removed_.remove(*row);
}

std::optional<QUuid> ClipboardStore::undoRemoval() {
  const auto queuedBefore = queue_.ids();
  const auto id = removed_.restore();
  if (!id) return std::nullopt;
  // Its picture may not have been read when it went.
  if (parts_.settings.ocrEnabled) recognizeTexts({*id});
  if (queue_.ids() != queuedBefore) Q_EMIT queueChanged(queue_.ids().size());
  return id;
}

void ClipboardStore::clearHistory() {
  settleRemovals();
  recorder_.forgetPending();
  history_.clear();
}

void ClipboardStore::togglePin(const QUuid& id) {
  const auto row = items().rowOf(id);
  if (!row) return;
  ClipItem clip = items().at(*row)->clip;
  clip.pinned = !clip.pinned;
  if (clip.pinned) clip.expiresAt.reset();
  history_.change(*row, clip, ClipHistory::Changed::columns);
}

void ClipboardStore::setCollection(const QUuid& id, const std::optional<QString>& name) {
  const auto row = items().rowOf(id);
  if (!row) return;
  ClipItem clip = items().at(*row)->clip;
  const QString trimmed = trimmedWhitespace(name.value_or(QString())).toString();
  clip.collection = trimmed.isEmpty() ? std::nullopt : std::optional(trimmed);
  if (clip.collection) {
    clip.pinned = true;
    clip.expiresAt.reset();
  }
  history_.change(*row, clip, ClipHistory::Changed::everything);
}

QList<SourceApp> ClipboardStore::sourceApps() const {
  QList<SourceApp> apps;
  QSet<std::pair<QString, QString>> seen;
  for (qsizetype row = 0; row < items().size(); ++row) {
    const auto app = sourceAppOf(items().at(row)->clip);
    if (!app || seen.contains({app->bundleID, app->name})) continue;
    seen.insert({app->bundleID, app->name});
    apps.append(*app);
  }
  std::sort(apps.begin(), apps.end(), [](const SourceApp& a, const SourceApp& b) {
    return a.name != b.name ? comesBefore(a.name, b.name) : a.bundleID < b.bundleID;
  });
  return apps;
}

QStringList ClipboardStore::collections() const {
  QSet<QString> names;
  for (qsizetype row = 0; row < items().size(); ++row) {
    if (const auto& name = items().at(row)->clip.collection) names.insert(*name);
  }
  QStringList sorted(names.begin(), names.end());
  std::sort(sorted.begin(), sorted.end(), comesBefore);
  return sorted;
}

void ClipboardStore::addToQueue(const QUuid& id) {
  if (items().rowOf(id) && queue_.append(id)) Q_EMIT queueChanged(queue_.ids().size());
}

void ClipboardStore::removeFromQueue(const QUuid& id) {
  if (queue_.remove(id)) Q_EMIT queueChanged(queue_.ids().size());
}

void ClipboardStore::forget(const QList<qsizetype>& rows, const QList<ClipRef>& clips) {
  for (const ClipRef& ref : clips) {
    if (!ref->clip.imageFile) continue;
    thumbnails_.remove(*ref->clip.imageFile);
    parts_.imageTexts.cancel(ref->clip.id);
  }
  const bool dequeued = queue_.removeIf([this](const QUuid& id) { return !items().rowOf(id); });
  Q_EMIT clipsRemoved(rows, clips);
  if (dequeued) Q_EMIT queueChanged(queue_.ids().size());
}

void ClipboardStore::setRecognizedText(const QUuid& id, const QString& text) {
  const auto row = items().rowOf(id);
  if (!row) return;
  // Kept, and searched, only once it is known to be no secret.
  parts_.grader.classifyText(text, items().at(*row)->clip.sourceBundleID,
                             [id, text, store = QPointer(this)](SensitivityLevel level) {
                               if (store) store->recorder_.keepRecognizedText(id, text, level);
                             });
}

void ClipboardStore::trimToCapacity() {
  history_.trim(parts_.settings.maxUnpinned);
}

void ClipboardStore::recognitionSwitched() {
  if (parts_.settings.ocrEnabled)
    recognizeMissingTexts();
  else
    parts_.imageTexts.cancelAll();
}

void ClipboardStore::renewReadPolicy() {
  PasteboardReadPolicy policy = captureReadPolicy(parts_.settings);
  policy.paused = paused_;
  parts_.pasteboard.setReadPolicy(policy);
}

void ClipboardStore::recognizeMissingTexts() {
  QList<QUuid> ids;
  for (qsizetype row = 0; row < items().size(); ++row)
    ids.append(items().at(row)->clip.id);
  recognizeTexts(ids);
}

void ClipboardStore::recognizeTexts(const QList<QUuid>& ids) {
  for (const QUuid& id : ids) {
    const auto row = items().rowOf(id);
    if (!row) continue;
    const ClipItem& clip = items().at(*row)->clip;
    if (clip.imageFile && !clip.ocrText) parts_.imageTexts.enqueue(id, *clip.imageFile);
  }
}

void ClipboardStore::setPaused(bool paused) {
  if (paused == paused_) return;
  // What was copied until now belongs to the state that ends.
  tick();
  paused_ = paused;
  pauseSwitched_ = parts_.clock.steadyNow();
  renewReadPolicy();
  Q_EMIT pauseChanged(paused);
}

void ClipboardStore::sweepExpired() {
  const auto rows = history_.rowsExpiredAt(parts_.clock.now());
  if (rows.isEmpty()) return;
  const auto onPasteboard = parts_.pasteboard.currentText();
  const bool stillThere = onPasteboard && std::any_of(rows.begin(), rows.end(), [&](qsizetype row) {
                            const ClipItem& clip = items().at(row)->clip;
                            return clip.isText() && clip.text == *onPasteboard;
                          });
  if (stillThere) {
    if (const auto change = parts_.pasteboard.clearIfUnchanged(lastChange_)) lastChange_ = *change;
  }
  history_.remove(rows);
}

}  // namespace nimbrel
