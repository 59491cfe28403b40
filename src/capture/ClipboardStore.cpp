#include "capture/ClipboardStore.h"

#include <QDateTime>
#include <QLocale>
#include <QPointer>
#include <algorithm>

#include "capture/PasteboardWriting.h"
#include "capture/model/Log.h"
#include "capture/model/SnippetPlaceholders.h"
#include "capture/model/TextRules.h"
#include "storage/ContentHash.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kPollInterval = 500ms;

}  // namespace

ClipboardStore::ClipboardStore(const ClipboardStoreParts& parts) : parts_(parts), search_(parts.database) {
  parts_.pasteboard.setReadPolicy(captureReadPolicy(parts_.settings));
  lastChange_ = parts_.pasteboard.changeCount();
  const LoadedHistory loaded = parts_.database.loadAll();
  if (loaded.unreadableCount > 0)
    qCCritical(clipboardLog, "%lld elementos ilegibles (se conservan en la base de datos)",
               static_cast<long long>(loaded.unreadableCount));
  history_ = HistoryList(loaded.clips);
  parts_.database.rebuildIndex(loaded.clips);
  connect(&timer_, &QTimer::timeout, this, &ClipboardStore::tick);
  timer_.start(kPollInterval);
  parts_.pasteboard.setChangeHandler([this] { tick(); });
}

ClipboardStore::~ClipboardStore() {
  parts_.pasteboard.setChangeHandler({});
}

void ClipboardStore::tick() {
  sweepExpired();
  const qint64 change = parts_.pasteboard.changeCount();
  if (change == lastChange_) return;
  const auto snapshots = parts_.pasteboard.changesAfter(lastChange_);
  lastChange_ = change;
  captureAll(snapshots);
}

void ClipboardStore::captureAll(const QList<PasteboardSnapshot>& snapshots) {
  for (const PasteboardSnapshot& snapshot : snapshots) {
    if (!wasPausedAt(snapshot.changedAt)) capture(snapshot);
  }
}

bool ClipboardStore::wasPausedAt(std::optional<std::chrono::steady_clock::time_point> moment) const {
  // Reading takes time: what was copied on one side of the switch may be ready only on the other.
  const bool beforeSwitch = moment && pauseSwitched_ && *moment < *pauseSwitched_;
  return beforeSwitch ? !paused_ : paused_;
}

void ClipboardStore::capture(const PasteboardSnapshot& snapshot) {
  const auto front = snapshot.frontApplication ? std::nullopt : parts_.workspace.frontmostApplication();
  const auto decision = decideCapture(snapshot, front, parts_.settings);
  std::visit([this](const auto& chosen) { record(chosen); }, decision);
}

void ClipboardStore::record(const CaptureNothing&) {}

void ClipboardStore::record(const CaptureFiles& files) {
  const QString hash = sha256Hex(files.paths.toUtf8());
  if (const auto row = history_.rowOfFiles(files.urls, hash)) return moveToTop(*row);
  ClipItem clip = newClip(files.source);
  clip.text = files.paths;
  clip.textHash = hash;
  clip.fileURLString = files.urls;
  insert(std::move(clip));
}

void ClipboardStore::record(const CaptureText& captured) {
  ClipItem clip = newClip(captured.source);
  const SensitivityLevel grade = parts_.grader.classify(captured.text, captured.source.bundleID, true);
  if (grade != SensitivityLevel::none) {
    const int expiry = grade == SensitivityLevel::soft ? parts_.settings.softSensitiveExpiry
                                                       : parts_.settings.sensitiveExpiry;
    if (expiry == 0) return;
    clip.sensitive = true;
    if (expiry > 0) clip.expiresAt = clip.date + std::chrono::seconds(expiry);
  }
  const QString hash = sha256Hex(captured.text.toUtf8());
  if (const auto row = history_.rowOfText(captured.text, hash)) return recordAgain(*row, clip);
  clip.text = captured.text;
  clip.textHash = hash;
  if (captured.rich && !clip.isSensitive()) {
    clip.richFile = parts_.files.storeRich(*captured.rich);
    if (clip.richFile) clip.richHash = captured.rich->hash;
  }
  insert(std::move(clip));
}

void ClipboardStore::record(const CaptureImage& captured) {
  const QPointer<ClipboardStore> alive(this);
  const ClipSource source = captured.source;
  parts_.files.storeImage(captured.data, [this, alive, source](const std::optional<StoredImage>& stored) {
    if (!alive || !stored) return;
    if (const auto row = history_.rowOfImage(stored->hash)) return moveToTop(*row);
    ClipItem clip = newClip(source);
    clip.imageFile = stored->file;
    clip.imageHash = stored->hash;
    insert(clip);
    if (parts_.settings.ocrEnabled) parts_.imageTexts.enqueue(clip);
  });
}

bool ClipboardStore::copyToPasteboard(const ClipItem& clip, bool plainOnly) {
  const SnippetValues snippets{
      .now = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(unixSeconds(now()) * 1000)),
      .locale = QLocale::system(),
      .clipboard = std::nullopt};
  const PasteboardContent content = pasteboardContentOf(clip, plainOnly, parts_.files, snippets);
  const auto change = content.isEmpty() ? std::nullopt : parts_.pasteboard.write(content);
  if (!change) return false;
  // Somebody's copy that is ready but not looked at yet must not be taken for part of this write.
  const auto missed = parts_.pasteboard.changesAfter(lastChange_);
  lastChange_ = *change;
  captureAll(missed);
  return true;
}

void ClipboardStore::addRemoteText(const QString& text, RemoteDeviceType device) {
  if (trimmedWhitespace(text).isEmpty()) return;
  record(CaptureText{.text = text, .rich = std::nullopt, .source = remoteSource(device)});
}

void ClipboardStore::removeClip(const QUuid& id) {
  if (const auto row = history_.rowOf(id)) removeRows({*row});
}

void ClipboardStore::togglePin(const QUuid& id) {
  const auto row = history_.rowOf(id);
  if (!row) return;
  ClipItem clip = history_.at(*row)->clip;
  clip.pinned = !clip.pinned;
  if (clip.pinned) clip.expiresAt.reset();
  parts_.database.update(clip);
  history_.replace(*row, std::make_shared<const IndexedClip>(std::move(clip)));
  Q_EMIT clipChanged(*row);
}

void ClipboardStore::setPaused(bool paused) {
  if (paused == paused_) return;
  // What was copied until now belongs to the state that ends.
  tick();
  paused_ = paused;
  pauseSwitched_ = parts_.clock.steadyNow();
  Q_EMIT pauseChanged(paused);
}

void ClipboardStore::sweepExpired() {
  const auto rows = history_.rowsExpiredAt(now());
  if (rows.isEmpty()) return;
  const auto onPasteboard = parts_.pasteboard.currentText();
  const bool stillThere = onPasteboard && std::any_of(rows.begin(), rows.end(), [&](qsizetype row) {
                            const ClipItem& clip = history_.at(row)->clip;
                            return clip.isText() && clip.text == *onPasteboard;
                          });
  if (stillThere) {
    if (const auto change = parts_.pasteboard.clearIfUnchanged(lastChange_)) lastChange_ = *change;
  }
  removeRows(rows);
}

Timestamp ClipboardStore::now() const {
  return parts_.clock.now();
}

ClipItem ClipboardStore::newClip(const ClipSource& source) const {
  ClipItem clip;
  clip.id = parts_.makeId();
  clip.date = now();
  clip.sourceBundleID = source.bundleID;
  clip.sourceName = source.name;
  clip.remoteDevice = source.remoteDevice;
  return clip;
}

void ClipboardStore::insert(ClipItem clip) {
  auto indexed = std::make_shared<const IndexedClip>(std::move(clip));
  history_.insertAtTop(indexed);
  ++revision_;
  parts_.database.save(indexed);
  Q_EMIT clipInserted();
  trim();
}

void ClipboardStore::recordAgain(qsizetype row, const ClipItem& fresh) {
  const ClipItem& known = history_.at(row)->clip;
  // A secret that is copied again lives on from now; otherwise it would vanish from under the user's hands.
  const bool renews = !known.pinned && fresh.isSensitive();
  if (!renews) return moveToTop(row);
  ClipItem clip = known;
  clip.expiresAt = fresh.expiresAt;
  const bool becomesSensitive = !clip.isSensitive();
  clip.sensitive = true;
  if (clip.richFile) parts_.files.removeFilesOf(clip);
  clip.richFile.reset();
  clip.richHash.reset();
  history_.replace(row, std::make_shared<const IndexedClip>(std::move(clip)));
  moveToTop(row);
  if (becomesSensitive) parts_.database.save(history_.at(0));
}

void ClipboardStore::moveToTop(qsizetype row) {
  ClipItem clip = history_.at(row)->clip;
  clip.date = now();
  parts_.database.update(clip);
  history_.replaceAtTop(row, std::make_shared<const IndexedClip>(std::move(clip)));
  ++revision_;
  Q_EMIT clipMovedToTop(row);
}

void ClipboardStore::trim() {
  removeRows(history_.rowsBeyond(parts_.settings.maxUnpinned));
}

void ClipboardStore::removeRows(const QList<qsizetype>& rows) {
  if (rows.isEmpty()) return;
  QList<QUuid> ids;
  bool sensitive = false;
  for (const qsizetype row : rows) {
    const ClipRef clip = history_.at(row);
    ids.append(clip->clip.id);
    sensitive = sensitive || clip->clip.isSensitive() || clip->clip.expiresAt;
    parts_.files.removeFilesOf(clip->clip);
    history_.removeAt(row);
    ++revision_;
    Q_EMIT clipRemoved(clip->clip.id);
  }
  parts_.database.remove(ids, sensitive ? ClipDatabase::Traces::erase : ClipDatabase::Traces::mayLinger);
}

}  // namespace nimbrel
