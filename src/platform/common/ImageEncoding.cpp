#include "platform/common/ImageEncoding.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <algorithm>
#include <cstring>

namespace nimbrel {
namespace {

bool isOpaque(const QImage& image) {
  if (!image.hasAlphaChannel()) return true;
  const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < pixels.height(); ++y) {
    const auto* const line = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
    if (std::any_of(line, line + pixels.width(), [](QRgb pixel) { return qAlpha(pixel) != 255; }))
      return false;
  }
  return true;
}

/// The one pixel format that a picture is stored in. Deep colour stays deep.
QImage::Format storedFormat(const QImage& image) {
  const bool opaque = isOpaque(image);
  const bool deep = image.depth() > 32 || image.format() == QImage::Format_Grayscale16;
  if (deep) return opaque ? QImage::Format_RGBX64 : QImage::Format_RGBA64;
  return opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32;
}

/// The pixels without the texts, such as comments and camera data, that an image carries along.
QImage withoutTexts(const QImage& image) {
  QImage bare(image.size(), image.format());
  if (bare.isNull()) return bare;
  const qsizetype length = std::min(bare.bytesPerLine(), image.bytesPerLine());
  for (int y = 0; y < image.height(); ++y)
    std::memcpy(bare.scanLine(y), image.constScanLine(y), static_cast<size_t>(length));
  bare.setColorSpace(image.colorSpace());
  bare.setDotsPerMeterX(image.dotsPerMeterX());
  bare.setDotsPerMeterY(image.dotsPerMeterY());
  return bare;
}

}  // namespace

QImage thumbnailOf(const QImage& image, int maxPixelSize) {
  const int side = std::max(maxPixelSize, 1);
  if (image.width() <= side && image.height() <= side) return image;
  const QSize size = image.size().scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
  return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QByteArray encodePng(const QImage& image) {
  return encodeImage(withoutTexts(image.convertToFormat(storedFormat(image))), "png");
}

QImage onWhite(const QImage& image) {
  if (!image.hasAlphaChannel()) return image;
  QImage opaque = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < opaque.height(); ++y) {
    auto* const line = reinterpret_cast<QRgb*>(opaque.scanLine(y));
    for (int x = 0; x < opaque.width(); ++x) {
      const int alpha = qAlpha(line[x]);
      const auto over = [alpha](int channel) { return (channel * alpha + 255 * (255 - alpha)) / 255; };
      line[x] = qRgb(over(qRed(line[x])), over(qGreen(line[x])), over(qBlue(line[x])));
    }
  }
  return opaque;
}

QByteArray encodeImage(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, format);
  if (std::strcmp(format, "jpeg") == 0) writer.setQuality(92);
  // zlib's level 1 in Qt's scale: a screenshot is written in half the time, and a tenth larger.
  if (std::strcmp(format, "png") == 0) writer.setCompression(11);
  if (!writer.write(image)) return {};
  return bytes;
}

}  // namespace nimbrel
