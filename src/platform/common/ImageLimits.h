#pragma once

#include <QSize>
#include <optional>

#include "platform/ImageCodec.h"

/// How large an image may be that is decoded, whoever decodes it.
namespace nimbrel {

/// The most pixels that an image may have, and the longest side; an 8K screen has 33 million.
inline constexpr qint64 kMaxPixels = 64'000'000;
inline constexpr int kMaxSide = 32'767;

/// Why an image of this size is not decoded; nothing when it is.
[[nodiscard]] std::optional<ImageError> sizeObstacle(const QSize& size);

/// For bytes that are no image, or not one that is decoded.
[[nodiscard]] ImageError unreadableImage();

}  // namespace nimbrel
