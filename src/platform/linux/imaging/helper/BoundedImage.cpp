#include "platform/linux/imaging/helper/BoundedImage.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <algorithm>
#include <array>
#include <memory>

#include "platform/common/ImageEncoding.h"
#include "platform/common/ImageLimits.h"

namespace nimbrel {
namespace {

constexpr std::array kFormats{"png", "jpeg", "tiff", "webp", "gif", "bmp", "ico", "pbm", "pgm", "ppm"};

/// Of the decoded pixels: the pixel limit at four bytes each.
constexpr int kMaxDecodedMegabytes = 256;

/// A reader for the first accepted format whose decoder knows the bytes; null when none does.
std::unique_ptr<QImageReader> readerFor(QBuffer& buffer) {
  for (const char* const format : kFormats) {
    buffer.seek(0);
    auto reader = std::make_unique<QImageReader>(&buffer, format);
    reader->setAutoDetectImageFormat(false);
    if (reader->canRead()) return reader;
  }
  return nullptr;
}

}  // namespace

void loadImageDecoders() {
  QImageReader::setAllocationLimit(kMaxDecodedMegabytes);
  QByteArray nothing(16, '\0');
  QBuffer buffer(&nothing);
  buffer.open(QIODevice::ReadOnly);
  for (const char* const format : kFormats) {
    buffer.seek(0);
    static_cast<void>(QImageReader(&buffer, format).canRead());
  }
  for (const char* const format : {"tiff", "bmp", "jpeg", "png"}) {
    QImage pixel(1, 1, QImage::Format_RGB32);
    pixel.fill(Qt::white);
    static_cast<void>(encodeImage(pixel, format));
  }
}

std::variant<QImage, ImageError> decodeImage(const QByteArray& bytes) {
  QImageReader::setAllocationLimit(kMaxDecodedMegabytes);
  QBuffer buffer;
  buffer.setData(bytes);
  buffer.open(QIODevice::ReadOnly);
  const auto reader = readerFor(buffer);
  if (!reader) return unreadableImage();
  const QSize announced = reader->size();
  if (const auto obstacle = sizeObstacle(announced)) return *obstacle;
  reader->setAutoTransform(true);
  QImage image;
  if (!reader->read(&image) || image.isNull()) return unreadableImage();
  // A header may have lied.
  if (const auto obstacle = sizeObstacle(image.size())) return *obstacle;
  return image;
}

}  // namespace nimbrel
