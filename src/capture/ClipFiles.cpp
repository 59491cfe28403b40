#include "capture/ClipFiles.h"

#include <future>
#include <thread>

#include "capture/model/ClipItem.h"
#include "capture/model/Log.h"
#include "storage/ContentHash.h"

namespace nimbrel {
namespace {

QString newFileName(const QString& extension) {
  return clipIdText(QUuid::createUuid()) + u'.' + extension;
}

std::optional<PreparedImage> prepared(ImageCodec& codec, const QByteArray& data,
                                      const std::stop_token& stop) {
  auto outcome = codec.encodePng(data, kThumbnailPixels, stop);
  if (const auto* const error = std::get_if<ImageError>(&outcome)) {
    logFailure("No se pudo guardar la imagen", error->description);
    return std::nullopt;
  }
  auto& encoded = std::get<ImageCodec::Encoded>(outcome);
  const QString hash = sha256Hex(encoded.png);
  return PreparedImage{std::move(encoded.png), hash, std::move(encoded.thumbnail)};
}

}  // namespace

ClipFiles::ClipFiles(BlobFiles& files, ImageCodec& codec)
    : files_(files),
      codec_(codec),
      fileQueue_(QStringLiteral("Nimbrel.files"), SerialQueue::Priority::utility),
      imageQueue_(QStringLiteral("Nimbrel.images"), SerialQueue::Priority::userInitiated) {}

void ClipFiles::prepareImage(const QByteArray& data,
                             std::function<void(const std::optional<PreparedImage>&)> done) {
  imageQueue_.post([this, data, done = std::move(done), stop = stop_.get_token()] {
    calls_.post([done, image = prepared(codec_, data, stop)] { done(image); });
  });
}

void ClipFiles::storeImage(const PreparedImage& image, Stored done) {
  fileQueue_.post([this, png = image.png, done = std::move(done)] {
    const QString name = newFileName(QStringLiteral("png"));
    const auto stored = files_.saveImage(png, name) ? std::optional(name) : std::nullopt;
    calls_.post([done, stored] { done(stored); });
  });
}

void ClipFiles::storeRich(const RichContent& content, Stored done) {
  fileQueue_.post([this, content, done = std::move(done)] {
    const QString name = newFileName(content.fileExtension);
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

void ClipFiles::sweepOrphans(ClipDatabase& database) {
  fileQueue_.post([this, &database] {
    files_.sweepOrphanImages(database.referencedImageFiles());
    files_.sweepOrphanRichFiles(database.referencedRichFiles());
  });
}

void ClipFiles::finish(std::chrono::milliseconds patience) {
  std::promise<void> finished;
  std::jthread watch([&stop = stop_, patience, done = finished.get_future()] {
    if (done.wait_for(patience) == std::future_status::timeout) stop.request_stop();
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
