#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <variant>

#include "platform/StopToken.h"

namespace nimbrel {

/// Why an image gave nothing; the text is for the log and never holds anything of the image.
struct ImageError final {
  QString description;
  bool operator==(const ImageError&) const = default;
};

/// Decodes and encodes images, which are hostile input: formats are whitelisted, pixels and memory bounded
/// before anything is decoded. Methods may take seconds, so never on the main thread; otherwise any thread. A
/// requested stop makes them fail soon.
class ImageCodec {
 public:
  /// The formats besides PNG that programs ask for.
  enum class Format { tiff, bmp, jpeg };

  struct Encoded final {
    QByteArray png;
    QImage thumbnail;
  };

  virtual ~ImageCodec() = default;

  /// Re-encodes an image of any supported raster format as PNG: upright, without comments or camera data, the
  /// same pixels at the same density always as the same bytes. The thumbnail is made on the way, as
  /// `thumbnail` does.
  [[nodiscard]] virtual std::variant<Encoded, ImageError> encodePng(const QByteArray& image, int maxPixelSize,
                                                                    const StopToken& stop) = 0;

  /// The image, upright, scaled down to fit a square of `maxPixelSize` pixels; smaller ones keep their size.
  [[nodiscard]] virtual std::variant<QImage, ImageError> thumbnail(const QByteArray& image, int maxPixelSize,
                                                                   const StopToken& stop) = 0;

  [[nodiscard]] virtual std::variant<QByteArray, ImageError> convert(const QByteArray& image, Format format,
                                                                     const StopToken& stop) = 0;
};

}  // namespace nimbrel
