#include "platform/linux/ImageConversions.h"

#include <utility>

namespace nimbrel {

ImageConversions::ImageConversions(ImageCodec* codec, std::function<void()> finished)
    : codec_(codec), finished_(std::move(finished)) {
  pool_.setMaxThreadCount(1);
  // A helper dies with the thread that started it.
  pool_.setExpiryTimeout(-1);
}

ImageConversions::~ImageConversions() {
  stop_.requestStop();
  pool_.clear();
  pool_.waitForDone();
}

void ImageConversions::start(quint64 ticket, const QByteArray& image, ImageCodec::Format format) {
  pool_.start([this, ticket, image, format, stop = stop_.token()] {
    auto outcome = codec_->convert(image, format, stop);
    auto* const bytes = std::get_if<QByteArray>(&outcome);
    {
      const std::lock_guard lock(mutex_);
      results_.append({ticket, bytes ? std::optional(std::move(*bytes)) : std::nullopt});
    }
    finished_();
  });
}

QList<ImageConversions::Result> ImageConversions::takeResults() {
  const std::lock_guard lock(mutex_);
  return std::exchange(results_, {});
}

}  // namespace nimbrel
