#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>
#include <optional>
#include <variant>

#include "capture/CaptureServices.h"
#include "capture/HistoryList.h"
#include "platform/Clock.h"
#include "settings/model/SettingsValues.h"
#include "storage/BlobFiles.h"
#include "storage/ClipDatabase.h"
#include "storage/archive/ArchiveReader.h"

namespace nimbrel {

/// What an import works with; everything outlives it.
struct HistoryImportParts final {
  ClipDatabase& database;
  BlobFiles& files;
  const Clock& clock;
  const SettingsValues& settings;
};

/// What an import came to.
struct ImportCount final {
  qsizetype added = 0;
  /// Clips that were there already, and have got the archive's pin or collection at most.
  qsizetype known = 0;
  /// Clips that are no part of a history any more, or that the settings want none of.
  qsizetype unwanted = 0;
  /// Clips that make no sense, or whose files could not be stored.
  qsizetype failed = 0;
  /// Of the history now.
  qsizetype unpinned = 0;

  bool operator==(const ImportCount&) const = default;
};

/// Why nothing was imported.
enum class ImportError {
  /// The archive's.
  archive,
  /// The history's, which could not be read whole or not be written; the log has why.
  database,
};

/// Takes the clips of an archive into a history that nobody else is using. What is there already, by its
/// content, is not added again. All of it is added or nothing is; what an interruption leaves behind are
/// files that the next sweep removes. Ungraded texts are graded, since an archive may come from anywhere. One
/// thread; *waits* for the disk.
class HistoryImport final {
 public:
  explicit HistoryImport(const HistoryImportParts& parts) : parts_(parts) {}

  /// From an archive that has been begun.
  [[nodiscard]] std::variant<ImportCount, ArchiveError, ImportError> run(ArchiveReader& archive);

 private:
  /// A clip of the archive with its files.
  struct Archived {
    std::optional<ClipItem> clip;
    std::optional<QByteArray> image;
    std::optional<QByteArray> rich;
  };

  [[nodiscard]] std::optional<ArchiveError> readAll(ArchiveReader& archive);
  void take(Archived archived);
  void complete(Archived& archived) const;
  /// False for a clip that the user wants none of.
  [[nodiscard]] bool grade(ClipItem& clip) const;
  [[nodiscard]] std::optional<qsizetype> rowOf(const ClipItem& clip) const;
  void merge(qsizetype row, Archived& item);
  [[nodiscard]] bool storeFiles(Archived& archived);
  void add(ClipItem clip);
  void removeStoredFiles();

  HistoryImportParts parts_;
  HistoryList history_;
  ImportCount count_;
  /// Rows that could not be read, and whose ids are nobody knows which.
  bool hasUnreadable_ = false;
  QHash<QUuid, ClipItem> changed_;
  SideFileNames stored_;
};

}  // namespace nimbrel
