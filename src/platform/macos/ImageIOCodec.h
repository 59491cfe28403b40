#pragma once

#include "platform/ImageCodec.h"

namespace nimbrel::macos {

/// Images decoded by ImageIO, whose formats and sizes are checked by the header before any pixel is.
class ImageIOCodec final : public ImageCodec {
 public:
  [[nodiscard]] std::variant<Encoded, ImageError> encodePng(const QByteArray& image, int maxPixelSize,
                                                            const StopToken& stop) override;
  [[nodiscard]] std::variant<QImage, ImageError> thumbnail(const QByteArray& image, int maxPixelSize,
                                                           const StopToken& stop) override;
  [[nodiscard]] std::variant<QByteArray, ImageError> convert(const QByteArray& image, Format format,
                                                             const StopToken& stop) override;
};

/// The size that an acceptable image has when it is upright, or why it is not to be decoded.
[[nodiscard]] std::variant<QSize, ImageError> uprightSize(const QByteArray& image);

}  // namespace nimbrel::macos
