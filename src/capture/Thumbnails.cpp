#include "capture/Thumbnails.h"

#include "memory/Wipe.h"

#include <algorithm>

#include "capture/ClipFiles.h"

namespace nimbrel {
namespace {

constexpr qsizetype kMaxBytes = 25'000'000;
constexpr qsizetype kMaxEntries = 100;
/// No entry counts as less, which bounds their number together with their size.
constexpr qsizetype kLeastCost = kMaxBytes / kMaxEntries;

}  // namespace

Thumbnails::Thumbnails(SideFiles& files, ImageCodec& codec)
    : files_(files),
      codec_(codec),
      cache_(kMaxBytes),
      queue_(QStringLiteral("Nimbrel.thumbnails"), SerialQueue::Priority::userInitiated) {}

Thumbnails::~Thumbnails() {
  stop_.requestStop();
}

QImage Thumbnails::thumbnail(const QString& file) {
  if (const QImage* const known = cache_.object(file)) return *known;
  if (!asked_.contains(file)) make(file);
  return {};
}

void Thumbnails::make(const QString& file) {
  asked_.insert(file);
  queue_.post([this, file, stop = stop_.token()] {
    if (stop.stopRequested()) return;
    auto data = files_.loadImage(file);
    if (!data) return;
    const WipedBytes picture(std::move(*data));
    const auto outcome = codec_.thumbnail(picture.bytes(), kThumbnailPixels, stop);
    const auto* const image = std::get_if<QImage>(&outcome);
    if (!image || image->isNull()) return;
    calls_.post([this, file, made = *image] {
      // Removed while it was being made.
      if (!asked_.contains(file)) return;
      insert(file, made);
      Q_EMIT ready(file);
    });
  });
}

void Thumbnails::insert(const QString& file, const QImage& thumbnail) {
  asked_.remove(file);
  cache_.insert(file, new QImage(thumbnail), std::max<qsizetype>(thumbnail.sizeInBytes(), kLeastCost));
}

void Thumbnails::remove(const QString& file) {
  asked_.remove(file);
  cache_.remove(file);
}

}  // namespace nimbrel
