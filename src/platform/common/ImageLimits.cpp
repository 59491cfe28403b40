#include "platform/common/ImageLimits.h"

namespace nimbrel {

std::optional<ImageError> sizeObstacle(const QSize& size) {
  if (size.isEmpty()) return unreadableImage();
  const bool fits = size.width() <= kMaxSide && size.height() <= kMaxSide &&
                    qint64(size.width()) * size.height() <= kMaxPixels;
  if (fits) return std::nullopt;
  return ImageError{
      QStringLiteral("la imagen es demasiado grande (%1 × %2)").arg(size.width()).arg(size.height())};
}

ImageError unreadableImage() {
  return {QStringLiteral("no es una imagen legible")};
}

}  // namespace nimbrel
