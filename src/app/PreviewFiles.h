#pragma once

#include <QString>
#include <QUrl>
#include <optional>

#include "capture/CaptureServices.h"
#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The file that stands for a clip in the preview.
struct PreviewFile final {
  QUrl url;
  /// Whether it was written for the preview and is to be deleted after it.
  bool isTemporary = false;

  bool operator==(const PreviewFile&) const = default;
};

/// Writes clips, in clear, into files for the preview: for their owner alone (0600), in a folder of their own
/// (0700). Any thread; writing waits for the disk, so never on the main one.
class PreviewFiles final {
 public:
  /// The folder is made when it is needed; without one nothing is written. The side files outlive this.
  PreviewFiles(const QString& folder, SideFiles& sideFiles) : folder_(folder), sideFiles_(sideFiles) {}

  /// The clip's own file where it refers to one that exists, else a new temporary file with its picture or
  /// its text. Nothing when its picture cannot be read or the file cannot be written.
  [[nodiscard]] std::optional<PreviewFile> fileFor(const ClipItem& clip);

  /// Deletes a file that was written for the preview; errors are ignored.
  static void remove(const QUrl& file);

  /// Deletes what a run that ended without warning has left behind.
  void removeAll() const;

 private:
  [[nodiscard]] bool prepareFolder() const;
  [[nodiscard]] std::optional<PreviewFile> write(const QByteArray& bytes, const QString& extension) const;

  const QString folder_;
  SideFiles& sideFiles_;
};

}  // namespace nimbrel
