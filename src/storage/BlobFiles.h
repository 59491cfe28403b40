#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>
#include <optional>

#include "platform/Clock.h"
#include "storage/HistoryCipher.h"

namespace nimbrel {

/// The files beside the database, each sealed and for its owner alone (0600): images in "Images", formatted
/// texts in "Rich". A file is written whole or not at all. Names that are not plain file names are never
/// followed. Any thread; every method works on the disk, so never the main one, except where it must have an
/// answer at once.
class BlobFiles final {
 public:
  /// The cipher and the clock outlive this.
  BlobFiles(const QString& storageDirectory, HistoryCipher& cipher, const Clock& clock);

  /// False, with a line in the log, when the file could not be written; then there is none.
  [[nodiscard]] bool saveImage(const QByteArray& data, const QString& name);
  [[nodiscard]] bool saveRich(const QByteArray& data, const QString& name);

  /// The whole content, opened; nothing when the file is missing, unreadable, or fails to open.
  [[nodiscard]] std::optional<QByteArray> loadImageData(const QString& name);
  [[nodiscard]] std::optional<QByteArray> loadRichData(const QString& name);

  /// Errors are ignored.
  void removeImage(const QString& name);
  void removeRich(const QString& name);

  /// Keeps the ids of the images whose text is still to be recognised, for the next start; errors are
  /// ignored.
  void savePendingTexts(const QList<QUuid>& ids);
  [[nodiscard]] QList<QUuid> loadPendingTexts();

  /// Deletes the regular files that no row refers to and that are older than ten minutes: a younger one may
  /// belong to a capture whose row is still on its way. Without the set of referenced names nothing is
  /// deleted.
  void sweepOrphanImages(const std::optional<QSet<QString>>& referenced);
  void sweepOrphanRichFiles(const std::optional<QSet<QString>>& referenced);

 private:
  /// What went wrong; nothing when the file is there.
  [[nodiscard]] std::optional<QString> writeSealedFile(const QByteArray& data, const QString& path);
  [[nodiscard]] std::optional<QByteArray> load(const QString& folder, const QString& name);
  [[nodiscard]] qint64 deleteOrphans(const QString& folder, const QSet<QString>& referenced,
                                     const char* failure);

  const QString images_;
  const QString rich_;
  const QString pendingTexts_;
  HistoryCipher& cipher_;
  const Clock& clock_;
};

}  // namespace nimbrel
