#include "capture/archive/HistoryImport.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

#include "capture/CaptureDecision.h"
#include "capture/ImportedClips.h"
#include "capture/SecretClips.h"
#include "capture/model/TextRules.h"
#include "storage/BlobName.h"
#include "storage/ContentHash.h"

namespace nimbrel {
namespace {

std::optional<ClipItem> decoded(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  return document.isObject() ? clipFromJson(document.object()) : std::nullopt;
}

/// What a clip with texts as long as they may be takes as JSON.
constexpr qsizetype kMaxClipBytes = 16'000'000;

/// Whether a clip could be one of the program's own: no larger than what is captured, with dates that are
/// some.
bool isSensible(const ClipItem& clip) {
  // The year 9999.
  constexpr double kLastMoment = 253'402'300'799;
  const auto isMoment = [](Timestamp moment) { return std::abs(unixSeconds(moment)) <= kLastMoment; };
  return clip.text.size() <= kMaxTextBytes && clip.ocrText.value_or(QString()).size() <= kMaxTextBytes &&
         isMoment(clip.date) && (!clip.expiresAt || isMoment(*clip.expiresAt));
}

}  // namespace

std::variant<ImportCount, ArchiveError, ImportError> HistoryImport::run(ArchiveReader& archive) {
  const LoadedHistory loaded = parts_.database.loadAll();
  // What cannot be read cannot be told from what is new.
  if (!loaded.complete) return ImportError::database;
  history_ = HistoryList(loaded.clips);
  hasUnreadable_ = loaded.unreadableCount > 0;
  if (const auto error = readAll(archive)) {
    removeStoredFiles();
    return *error;
  }
  if (!changed_.isEmpty() && !parts_.database.saveMany(changed_.values())) {
    removeStoredFiles();
    return ImportError::database;
  }
  // Whoever reads meanwhile only delays this.
  static_cast<void>(parts_.database.checkpoint());
  count_.unpinned = history_.unpinnedCount();
  return count_;
}

std::optional<ArchiveError> HistoryImport::readAll(ArchiveReader& archive) {
  Archived archived;
  for (;;) {
    auto next = archive.next();
    if (const auto* const error = std::get_if<ArchiveError>(&next)) return *error;
    auto* const record = std::get_if<ArchiveRecord>(&next);
    const bool begins = !record || record->type == ArchiveRecord::Type::clip;
    if (begins && (archived.clip || archived.image || archived.rich)) take(std::exchange(archived, {}));
    if (!record) return std::nullopt;
    switch (record->type) {
      case ArchiveRecord::Type::clip:
        if (record->data.size() <= kMaxClipBytes) archived.clip = decoded(record->data);
        if (!archived.clip) ++count_.failed;
        wipe(record->data);
        break;
      case ArchiveRecord::Type::image:
        archived.image = std::move(record->data);
        break;
      case ArchiveRecord::Type::rich:
        archived.rich = std::move(record->data);
        break;
    }
  }
}

void HistoryImport::take(Archived archived) {
  // Files without a clip, or of one that made no sense.
  if (!archived.clip) return;
  const bool lacksImage = archived.clip->imageFile && !archived.image;
  if (lacksImage || !isSensible(*archived.clip)) {
    ++count_.failed;
    return;
  }
  complete(archived);
  ClipItem& clip = *archived.clip;
  const bool expired = clip.expiresAt && *clip.expiresAt <= parts_.clock.now();
  if (expired || !grade(clip)) {
    ++count_.unwanted;
    return;
  }
  if (const auto row = rowOf(clip)) {
    ++count_.known;
    return merge(*row, archived);
  }
  if (!storeFiles(archived)) {
    ++count_.failed;
    return;
  }
  ++count_.added;
  add(clip);
}

bool HistoryImport::grade(ClipItem& clip) const {
  const auto now = parts_.clock.now();
  // What this history's user wants of secrets holds, whatever the other's wanted.
  if (clip.isSensitive()) return markSecret(clip, SensitivityLevel::hard, parts_.settings, now);
  clip.sensitive.reset();
  return gradeImported(clip, parts_.settings, now);
}

void HistoryImport::complete(Archived& archived) const {
  ClipItem& clip = *archived.clip;
  // A clip is of one kind, and its content is what is there, whatever the archive says of it.
  if (!clip.imageFile) archived.image.reset();
  if (archived.image) clip.fileURLString.reset();
  clip.imageHash = archived.image ? std::optional(sha256Hex(*archived.image)) : std::nullopt;
  clip.textHash = archived.image ? std::nullopt : std::optional(sha256Hex(clip.text.toUtf8()));
  const bool isCollected = clip.collection && !trimmedWhitespace(*clip.collection).isEmpty();
  if (!isCollected) clip.collection.reset();
  clip.pinned = clip.pinned || isCollected;
  if (clip.pinned) clip.expiresAt.reset();
  // Another clip may have this id; also one that cannot be read.
  if (clip.id.isNull() || hasUnreadable_ || history_.rowOf(clip.id)) clip.id = QUuid::createUuid();
}

std::optional<qsizetype> HistoryImport::rowOf(const ClipItem& clip) const {
  if (clip.isImage()) return history_.rowOfImage(*clip.imageHash);
  if (clip.isFile()) return history_.rowOfFiles(*clip.fileURLString, *clip.textHash);
  return history_.rowOfText(clip.text, *clip.textHash);
}

void HistoryImport::merge(qsizetype row, Archived& item) {
  const ClipItem before = history_.at(row)->clip;
  const ClipItem& archived = *item.clip;
  ClipItem clip = before;
  // A picture whose file has been lost, and a text that never had its formatting.
  const bool lacksFile = before.isImage() ? !parts_.files.loadImageData(*before.imageFile)
                                          : before.isText() && !before.richFile && !before.isSensitive();
  if (lacksFile && storeFiles(item)) {
    clip.imageFile = archived.imageFile;
    clip.richFile = archived.richFile;
    clip.richHash = archived.richHash;
  }
  if (archived.isSensitive() && !clip.isSensitive()) {
    becomeSensitive(clip);
    if (!clip.pinned) clip.expiresAt = archived.expiresAt;
  }
  // That a secret stays is for the user of this history to say.
  if (!clip.isSensitive()) {
    clip.pinned = clip.pinned || archived.pinned;
    if (!clip.collection) clip.collection = archived.collection;
    if (!clip.ocrText) clip.ocrText = archived.ocrText;
  }
  if (clip.pinned) clip.expiresAt.reset();
  if (clip == before) return;
  history_.replace(row, std::make_shared<const IndexedClip>(clip));
  changed_.insert(clip.id, clip);
}

bool HistoryImport::storeFiles(Archived& archived) {
  ClipItem& clip = *archived.clip;
  const QString extension =
      clip.richFile.value_or(QString()).endsWith(u".html") ? QStringLiteral("html") : QStringLiteral("rtf");
  const bool hasRich = archived.rich && clip.isText() && clip.richFile && !clip.isSensitive();
  clip.richFile.reset();
  clip.richHash.reset();
  if (archived.image) {
    clip.imageFile = newBlobName(QStringLiteral("png"));
    if (!parts_.files.saveImage(*archived.image, *clip.imageFile)) return false;
    stored_.images.append(*clip.imageFile);
  }
  if (!hasRich) return true;
  const QString name = newBlobName(extension);
  // A text without its formatting is better than none.
  if (!parts_.files.saveRich(*archived.rich, name)) return true;
  stored_.rich.append(name);
  clip.richFile = name;
  clip.richHash = sha256Hex(*archived.rich);
  return true;
}

void HistoryImport::add(ClipItem clip) {
  changed_.insert(clip.id, clip);
  history_.insert(std::make_shared<const IndexedClip>(std::move(clip)), history_.takePlace());
}

void HistoryImport::removeStoredFiles() {
  for (const QString& name : stored_.images)
    parts_.files.removeImage(name);
  for (const QString& name : stored_.rich)
    parts_.files.removeRich(name);
}

}  // namespace nimbrel
