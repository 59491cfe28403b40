#include "capture/CaptureServices.h"

namespace nimbrel {

SensitivityLevel NoTextGrader::classify(const QString&, const std::optional<QString>&, bool) const {
  return SensitivityLevel::none;
}

void NoSideFiles::storeImage(const QByteArray&, std::function<void(std::optional<StoredImage>)> done) {
  done(std::nullopt);
}

std::optional<QString> NoSideFiles::storeRich(const RichContent&) {
  return std::nullopt;
}

std::optional<QByteArray> NoSideFiles::loadImage(const QString&) {
  return std::nullopt;
}

std::optional<QByteArray> NoSideFiles::loadRich(const QString&) {
  return std::nullopt;
}

void NoSideFiles::removeFilesOf(const ClipItem&) {}

void NoImageTextQueue::enqueue(const ClipItem&) {}

}  // namespace nimbrel
