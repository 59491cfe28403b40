#include "capture/ClipFiles.h"

#include <future>

#include "capture/model/Log.h"
#include "storage/BlobName.h"
#include "storage/ContentHash.h"

namespace nimbrel {
namespace {

/// What may wait to be decoded: six of the largest images, or hundreds of screenshots.
constexpr qint64 kMaxWaitingBytes = 128LL << 20;

constexpr const char* kCannotStore = "No se pudo guardar la imagen";

using References = std::optional<QSet<QString>>;

References with(References references, const QStringList& more) {
  if (references) references->unite(QSet<QString>(more.begin(), more.end()));
  return references;
}

}  // namespace

ClipFiles::ClipFiles(BlobFiles& files, ImageCodec& codec)
    : files_(files),
      codec_(codec),
      fileQueue_(QStringLiteral("Nimbrel.files"), SerialQueue::Priority::utility),
      imageQueue_(QStringLiteral("Nimbrel.images"), SerialQueue::Priority::userInitiated) {}

void ClipFiles::prepareImage(const QByteArray& data,
                             std::function<void(const std::optional<PreparedImage>&)> done) {
  if (waitingBytes_ + data.size() > kMaxWaitingBytes) {
    logFailure(kCannotStore, QStringLiteral("demasiadas imágenes a la vez"));
    return calls_.post([done = std::move(done)] { done(std::nullopt); });
  }
  waitingBytes_ += data.size();
  imageQueue_.post([this, data, done = std::move(done)] {
    calls_.post([done, image = prepare(data)] { done(image); });
    waitingBytes_ -= data.size();
  });
}

std::optional<PreparedImage> ClipFiles::prepare(const QByteArray& data) {
  const StopSource stop;
  {
    const std::lock_guard lock(mutex_);
    running_ = stop;
  }
  using Outcome = std::variant<ImageCodec::Encoded, ImageError>;
  auto outcome = givesUp_ ? Outcome(ImageError{}) : codec_.encodePng(data, kThumbnailPixels, stop.token());
  if (const auto* const error = std::get_if<ImageError>(&outcome)) {
    const bool lost = givesUp_ || stop.stopRequested();
    logFailure(kCannotStore, lost ? QStringLiteral("se perdió al cerrar") : error->description);
    return std::nullopt;
  }
  auto& encoded = std::get<ImageCodec::Encoded>(outcome);
  const QString hash = sha256Hex(encoded.png);
  return PreparedImage{std::move(encoded.png), hash, std::move(encoded.thumbnail)};
}

void ClipFiles::storeImage(const PreparedImage& image, Stored done) {
  fileQueue_.post([this, png = image.png, done = std::move(done)] {
    const QString name = newBlobName(QStringLiteral("png"));
    const auto stored = files_.saveImage(png, name) ? std::optional(name) : std::nullopt;
    calls_.post([done, stored] { done(stored); });
  });
}

void ClipFiles::storeRich(const RichContent& content, Stored done) {
  fileQueue_.post([this, content, done = std::move(done)] {
    const QString name = newBlobName(content.fileExtension);
    const auto stored = files_.saveRich(content.data, name) ? std::optional(name) : std::nullopt;
    calls_.post([done, stored] { done(stored); });
  });
}

std::optional<QByteArray> ClipFiles::loadImage(const QString& file) {
  return files_.loadImageData(file);
}

std::optional<QByteArray> ClipFiles::loadRich(const QString& file) {
  return files_.loadRichData(file);
}

void ClipFiles::remove(const SideFileNames& names) {
  if (names.isEmpty()) return;
  fileQueue_.post([this, names] {
    for (const QString& name : names.images)
      files_.removeImage(name);
    for (const QString& name : names.rich)
      files_.removeRich(name);
  });
}

void ClipFiles::rememberPendingTexts(const QList<QUuid>& ids) {
  fileQueue_.post([this, ids] { files_.savePendingTexts(ids); });
}

void ClipFiles::sweepOrphans(ClipDatabase& database, const SideFileNames& inUse) {
  fileQueue_.post([this, &database, inUse] {
    files_.sweepOrphanImages(with(database.referencedImageFiles(), inUse.images));
    files_.sweepOrphanRichFiles(with(database.referencedRichFiles(), inUse.rich));
  });
}

void ClipFiles::giveUpSlowImages(std::chrono::milliseconds patience, const std::future<void>& done) {
  constexpr int kRounds = 4;
  for (int round = 1; done.wait_for(patience) == std::future_status::timeout; ++round) {
    if (round >= kRounds) givesUp_ = true;
    const std::lock_guard lock(mutex_);
    running_.requestStop();
  }
}

void ClipFiles::finish(std::chrono::milliseconds patience) {
  std::promise<void> finished;
  // Ends, and is waited for, when everything else has.
  const auto watch = std::async(std::launch::async, [this, patience, done = finished.get_future()] {
    giveUpSlowImages(patience, done);
  });
  // An image is decoded, told, and only then stored and told again.
  for (int round = 0; round < 2; ++round) {
    imageQueue_.runAndWait([] {});
    fileQueue_.runAndWait([] {});
    calls_.deliver();
  }
  finished.set_value();
}

}  // namespace nimbrel
