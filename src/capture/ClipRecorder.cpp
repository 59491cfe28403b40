#include "capture/ClipRecorder.h"

#include <QPointer>

#include "capture/SecretClips.h"
#include "capture/detection/SensitiveDetector.h"
#include "storage/ContentHash.h"

namespace nimbrel {

void ClipRecorder::record(const CaptureDecision& decision) {
  std::visit([this](const auto& chosen) { take(chosen); }, decision);
}

void ClipRecorder::take(const CaptureNothing&) {}

void ClipRecorder::take(const CaptureFiles& captured) {
  ClipItem clip = newClip(captured.source);
  clip.text = captured.paths;
  clip.textHash = sha256Hex(captured.paths.toUtf8());
  clip.fileURLString = captured.urls;
  const Place place = history_.takePlace();
  if (const auto row = history_.items().rowOfFiles(captured.urls, *clip.textHash))
    return moveUp(*row, clip.date, place);
  insert(clip, place);
}

void ClipRecorder::take(const CaptureText& captured) {
  ClipItem clip = newClip(captured.source);
  clip.text = captured.text;
  const Place place = history_.takePlace();
  const SensitivityLevel level = parts_.grader.classify(clip.text, clip.sourceBundleID, true);
  if (level != SensitivityLevel::none || !SensitiveDetector::hasSeveralLines(clip.text))
    return keepText(clip, level, captured.rich, place);
  // Kept only once it is known what it is: a secret must not be shown or stored in clear for even a moment.
  parts_.grader.classifyText(
      clip.text, clip.sourceBundleID,
      [this, clip, place, rich = captured.rich, alive = QPointer(&history_)](SensitivityLevel graded) {
        if (alive) keepText(clip, graded, rich, place);
      });
}

void ClipRecorder::keepText(ClipItem clip, SensitivityLevel level, const std::optional<RichContent>& rich,
                            Place place) {
  if (place < forgotten_) return;
  clip.textHash = sha256Hex(clip.text.toUtf8());
  if (!markSecret(clip, level, parts_.settings, clip.date)) return dropUnwanted(clip);
  QUuid id = clip.id;
  if (const auto row = history_.items().rowOfText(clip.text, *clip.textHash)) {
    id = history_.items().at(*row)->clip.id;
    recordAgain(*row, clip, place);
  } else {
    insert(clip, place);
  }
  if (rich && !clip.isSensitive()) keepFormat(id, *rich);
}

void ClipRecorder::take(const CaptureImage& captured) {
  const Place place = history_.takePlace();
  parts_.files.prepareImage(captured.data, [this, place, clip = newClip(captured.source),
                                            alive = QPointer(&history_)](const auto& image) {
    if (alive && image) keepImage(*image, clip, place);
  });
}

ClipItem ClipRecorder::newClip(const ClipSource& source) const {
  ClipItem clip;
  clip.id = parts_.makeId();
  clip.date = parts_.clock.now();
  clip.sourceBundleID = source.bundleID;
  clip.sourceName = source.name;
  clip.remoteDevice = source.remoteDevice;
  return clip;
}

void ClipRecorder::keepRecognizedText(const QUuid& id, const QString& text, SensitivityLevel level) {
  const auto row = history_.items().rowOf(id);
  if (!row) return;
  ClipItem clip = history_.items().at(*row)->clip;
  clip.ocrText = text;
  // Six digits in a picture from anywhere are hardly ever a code, and no reason to lose the picture.
  const bool credential = level == SensitivityLevel::hard && !clip.isSensitive();
  if (credential && !markSecret(clip, level, parts_.settings, parts_.clock.now()))
    return history_.remove({*row});
  history_.change(*row, clip, ClipHistory::Changed::everything);
}

void ClipRecorder::insert(const ClipItem& clip, Place place) {
  history_.insert(clip, place);
  history_.trim(parts_.settings.maxUnpinned);
}

void ClipRecorder::recordAgain(qsizetype row, const ClipItem& fresh, Place place) {
  ClipItem clip = history_.items().at(row)->clip;
  // A secret that is copied again lives on from now; otherwise it would vanish from under the user's hands.
  const bool secret = fresh.isSensitive() && (!clip.pinned || !clip.isSensitive());
  if (!secret) return moveUp(row, fresh.date, place);
  clip.date = fresh.date;
  if (!clip.pinned) clip.expiresAt = fresh.expiresAt;
  const bool known = clip.isSensitive() && !clip.richFile;
  becomeSensitive(clip);
  history_.moveUp(row, clip, known ? ClipHistory::Changed::columns : ClipHistory::Changed::everything, place);
}

void ClipRecorder::dropUnwanted(const ClipItem& fresh) {
  const auto row = history_.items().rowOfText(fresh.text, *fresh.textHash);
  if (!row) return;
  ClipItem clip = history_.items().at(*row)->clip;
  // What the user has pinned is only masked.
  if (!clip.pinned) return history_.remove({*row});
  if (clip.isSensitive()) return;
  becomeSensitive(clip);
  history_.change(*row, clip, ClipHistory::Changed::everything);
}

void ClipRecorder::moveUp(qsizetype row, Timestamp date, Place place) {
  // Copied yet again while this was on its way.
  if (history_.items().placeAt(row) > place) return;
  ClipItem clip = history_.items().at(row)->clip;
  clip.date = date;
  history_.moveUp(row, clip, ClipHistory::Changed::columns, place);
}

void ClipRecorder::keepFormat(const QUuid& id, const RichContent& rich) {
  const auto row = history_.items().rowOf(id);
  if (!row) return;
  const ClipItem& clip = history_.items().at(*row)->clip;
  // What was copied last is what the user wants to paste, its formatting included.
  const auto onItsWay = comingFormats_.constFind(id);
  const std::optional<QString> known = onItsWay == comingFormats_.constEnd() ? clip.richHash : *onItsWay;
  if (clip.isSensitive() || known == rich.hash) return;
  comingFormats_.insert(id, rich.hash);
  parts_.files.storeRich(rich, [this, id, hash = rich.hash, alive = QPointer(&history_)](const auto& file) {
    if (!alive) return;
    if (comingFormats_.value(id) == hash) comingFormats_.remove(id);
    if (file) attachFormat(id, *file, hash);
  });
}

void ClipRecorder::attachFormat(const QUuid& id, const QString& file, const QString& hash) {
  const auto row = history_.items().rowOf(id);
  // Gone meanwhile, or found to be a secret.
  if (!row || history_.items().at(*row)->clip.isSensitive())
    return parts_.files.remove({.images = {}, .rich = {file}});
  ClipItem clip = history_.items().at(*row)->clip;
  clip.richFile = file;
  clip.richHash = hash;
  history_.change(*row, clip, ClipHistory::Changed::everything);
}

void ClipRecorder::keepImage(const PreparedImage& image, ClipItem clip, Place place) {
  if (place < forgotten_) return;
  if (const auto row = history_.items().rowOfImage(image.hash)) return moveUp(*row, clip.date, place);
  parts_.files.storeImage(
      image, [this, image, clip = std::move(clip), place, alive = QPointer(&history_)](const auto& file) {
        if (alive && file) insertImage(image, *file, clip, place);
      });
}

void ClipRecorder::insertImage(const PreparedImage& image, const QString& file, ClipItem clip, Place place) {
  if (place < forgotten_) return parts_.files.remove({.images = {file}, .rich = {}});
  // The same image may have been copied twice before it was stored once.
  if (const auto row = history_.items().rowOfImage(image.hash)) {
    parts_.files.remove({.images = {file}, .rich = {}});
    return moveUp(*row, clip.date, place);
  }
  clip.imageFile = file;
  clip.imageHash = image.hash;
  parts_.thumbnails.insert(file, image.thumbnail);
  insert(clip, place);
  // A very small history may have pushed it out again.
  const bool kept = history_.items().rowOf(clip.id).has_value();
  if (kept && parts_.settings.ocrEnabled) parts_.imageTexts.enqueue(clip.id, file);
}

}  // namespace nimbrel
