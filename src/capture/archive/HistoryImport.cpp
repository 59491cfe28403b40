#include "capture/archive/HistoryImport.h"

#include <QJsonDocument>
#include <QJsonObject>

#include "capture/ImportedClips.h"
#include "storage/ContentHash.h"

namespace nimbrel {
namespace {

/// As a clip's own files are named.
QString fileName(const QString& extension) {
  return clipIdText(QUuid::createUuid()) + u'.' + extension;
}

std::optional<ClipItem> decoded(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  return document.isObject() ? clipFromJson(document.object()) : std::nullopt;
}

}  // namespace

std::variant<ImportCount, ArchiveError, ImportError> HistoryImport::run(ArchiveReader& archive) {
  history_ = HistoryList(parts_.database.loadAll().clips);
  if (const auto error = readAll(archive)) {
    removeStoredFiles();
    return *error;
  }
  if (!changed_.isEmpty() && (!parts_.database.saveMany(changed_) || !parts_.database.checkpoint())) {
    removeStoredFiles();
    return ImportError::database;
  }
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
        archived.clip = decoded(record->data);
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
  if (archived.clip->imageFile && !archived.image) {
    ++count_.failed;
    return;
  }
  complete(archived);
  ClipItem& clip = *archived.clip;
  const bool expired = !clip.pinned && clip.expiresAt && *clip.expiresAt <= parts_.clock.now();
  if (expired || !gradeImported(clip, parts_.settings, parts_.clock.now())) {
    ++count_.unwanted;
    return;
  }
  if (const auto row = rowOf(clip)) {
    ++count_.known;
    return merge(*row, clip);
  }
  if (!storeFiles(archived)) {
    ++count_.failed;
    return;
  }
  ++count_.added;
  add(clip);
}

void HistoryImport::complete(Archived& archived) const {
  ClipItem& clip = *archived.clip;
  // Whatever the archive says of its content.
  if (archived.image)
    clip.imageHash = sha256Hex(*archived.image);
  else
    clip.textHash = sha256Hex(clip.text.toUtf8());
  if (clip.pinned) clip.expiresAt.reset();
  if (clip.collection) clip.pinned = true;
  // Another history may have a clip of this name.
  if (clip.id.isNull() || history_.rowOf(clip.id)) clip.id = QUuid::createUuid();
}

std::optional<qsizetype> HistoryImport::rowOf(const ClipItem& clip) const {
  if (clip.isImage()) return history_.rowOfImage(*clip.imageHash);
  if (clip.isFile()) return history_.rowOfFiles(*clip.fileURLString, *clip.textHash);
  return history_.rowOfText(clip.text, *clip.textHash);
}

void HistoryImport::merge(qsizetype row, const ClipItem& archived) {
  const ClipItem before = history_.at(row)->clip;
  ClipItem clip = before;
  clip.pinned = clip.pinned || archived.pinned;
  if (!clip.collection) clip.collection = archived.collection;
  if (!clip.ocrText) clip.ocrText = archived.ocrText;
  if (clip.pinned) clip.expiresAt.reset();
  if (clip == before) return;
  history_.replace(row, std::make_shared<const IndexedClip>(clip));
  changed_.removeIf([&](const ClipItem& other) { return other.id == clip.id; });
  changed_.append(clip);
}

bool HistoryImport::storeFiles(Archived& archived) {
  ClipItem& clip = *archived.clip;
  const QString extension =
      clip.richFile.value_or(QString()).endsWith(u".html") ? QStringLiteral("html") : QStringLiteral("rtf");
  const bool hasRich = archived.rich && clip.isText() && clip.richFile && !clip.isSensitive();
  clip.richFile.reset();
  clip.richHash.reset();
  if (archived.image) {
    clip.imageFile = fileName(QStringLiteral("png"));
    if (!parts_.files.saveImage(*archived.image, *clip.imageFile)) return false;
    stored_.images.append(*clip.imageFile);
  }
  if (!hasRich) return true;
  const QString name = fileName(extension);
  // A text without its formatting is better than none.
  if (!parts_.files.saveRich(*archived.rich, name)) return true;
  stored_.rich.append(name);
  clip.richFile = name;
  clip.richHash = sha256Hex(*archived.rich);
  return true;
}

void HistoryImport::add(ClipItem clip) {
  changed_.append(clip);
  history_.insert(std::make_shared<const IndexedClip>(std::move(clip)), history_.takePlace());
}

void HistoryImport::removeStoredFiles() {
  for (const QString& name : stored_.images)
    parts_.files.removeImage(name);
  for (const QString& name : stored_.rich)
    parts_.files.removeRich(name);
}

}  // namespace nimbrel
