#include "capture/archive/HistoryExport.h"

#include <QJsonDocument>

#include "capture/model/ClipItem.h"

namespace nimbrel {
namespace {

using Type = ArchiveRecord::Type;

bool writeClip(const ClipItem& clip, ArchiveWriter& archive) {
  WipedBytes json(QJsonDocument(clipToJson(clip)).toJson(QJsonDocument::Compact));
  return archive.write({Type::clip, json.bytes()});
}

}  // namespace

std::optional<ExportCount> exportHistory(const QList<ClipRef>& clips, ExportedSecrets secrets,
                                         BlobFiles& files, const Clock& clock, ArchiveWriter& archive) {
  ExportCount count;
  for (const ClipRef& ref : clips) {
    const ClipItem& clip = ref->clip;
    if (!clip.pinned && clip.expiresAt && *clip.expiresAt <= clock.now()) continue;
    if (clip.isSensitive() && secrets == ExportedSecrets::leftOut) {
      ++count.secrets;
      continue;
    }
    const auto image = clip.imageFile ? files.loadImageData(*clip.imageFile) : std::nullopt;
    if (clip.imageFile && !image) {
      ++count.unreadable;
      continue;
    }
    const auto rich = clip.richFile ? files.loadRichData(*clip.richFile) : std::nullopt;
    const bool written = writeClip(clip, archive) && (!image || archive.write({Type::image, *image})) &&
                         (!rich || archive.write({Type::rich, *rich}));
    if (!written) return std::nullopt;
    ++count.clips;
  }
  if (!archive.finish()) return std::nullopt;
  return count;
}

}  // namespace nimbrel
