#pragma once

#include <atomic>
#include <chrono>
#include <future>
#include <mutex>

#include "capture/CaptureServices.h"
#include "capture/MainThreadCalls.h"
#include "platform/ImageCodec.h"
#include "platform/StopToken.h"
#include "storage/BlobFiles.h"
#include "storage/ClipDatabase.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// The side of the square that thumbnails fit, in pixels: a row's picture on a screen of twice the density.
inline constexpr int kThumbnailPixels = 256;

/// The files beside the database, written and deleted on a queue of their own, "Nimbrel.files"; images are
/// decoded on another, "Nimbrel.images", so that a slow one holds up other images only.
class ClipFiles final : public SideFiles {
 public:
  /// Files and codec outlive this.
  ClipFiles(BlobFiles& files, ImageCodec& codec);

  void prepareImage(const QByteArray& data,
                    std::function<void(const std::optional<PreparedImage>&)> done) override;
  void storeImage(const PreparedImage& image, Stored done) override;
  void storeRich(const RichContent& content, Stored done) override;
  [[nodiscard]] std::optional<QByteArray> loadImage(const QString& file) override;
  [[nodiscard]] std::optional<QByteArray> loadRich(const QString& file) override;
  void remove(const SideFileNames& names) override;

  /// Keeps, later, the ids of the images whose text is still to be recognised.
  void rememberPendingTexts(const QList<QUuid>& ids);

  /// Deletes, later, the files that no row of the database refers to and that are not in use: those of a clip
  /// that is deleted meanwhile may be wanted back. The database must not go before that is done, which
  /// `finish` waits for.
  void sweepOrphans(ClipDatabase& database, const SideFileNames& inUse);

  /// Finishes all that was asked for so far and tells what came of it; *waits*, but gives up each image that
  /// takes longer than `patience`, and after four times as long all that are left. For the end of the
  /// program.
  void finish(std::chrono::milliseconds patience = std::chrono::milliseconds(1500));

 private:
  BlobFiles& files_;
  ImageCodec& codec_;
  /// Waits with patience until it is told that all is done.
  void giveUpSlowImages(std::chrono::milliseconds patience, const std::future<void>& done);
  [[nodiscard]] std::optional<PreparedImage> prepare(const QByteArray& data);

  std::mutex mutex_;
  /// Stops the image that is being decoded.
  StopSource running_;
  std::atomic<bool> givesUp_ = false;
  /// Bytes of images that wait to be decoded.
  std::atomic<qint64> waitingBytes_ = 0;
  MainThreadCalls calls_;
  // Last members, first to go: what they still run uses all of the above.
  SerialQueue fileQueue_;
  SerialQueue imageQueue_;
};

}  // namespace nimbrel
