#pragma once

#include <QIODevice>
#include <QList>
#include <optional>

#include "capture/model/IndexedClip.h"
#include "platform/Clock.h"
#include "storage/BlobFiles.h"
#include "storage/archive/ArchiveWriter.h"

namespace nimbrel {

/// What an export came to.
struct ExportCount final {
  qsizetype clips = 0;
  /// Secrets that were left out, as asked.
  qsizetype secrets = 0;
  /// Images whose file could not be read; formatted texts without their formatting still count as written.
  qsizetype unreadable = 0;

  bool operator==(const ExportCount&) const = default;
};

/// Which clips are taken along.
enum class ExportedSecrets { leftOut, included };

/// Writes clips with their files to an archive that has been begun, and its end. What has expired is no part
/// of the history any more. Nothing when the archive could not be written. Any thread; *waits* for the disk.
[[nodiscard]] std::optional<ExportCount> exportHistory(const QList<ClipRef>& clips, ExportedSecrets secrets,
                                                       BlobFiles& files, const Clock& clock,
                                                       ArchiveWriter& archive);

}  // namespace nimbrel
