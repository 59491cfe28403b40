#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <variant>

#include "platform/ImageCodec.h"

/// Images from bytes that nobody vouches for.
namespace nimbrel {

/// The most pixels that an image may have, and the longest side; an 8K screen has 33 million.
inline constexpr qint64 kMaxPixels = 64'000'000;
inline constexpr int kMaxSide = 32'767;

/// Loads the decoders of all accepted formats, so that none has to be looked for once files are out of reach.
void loadImageDecoders();

/// Decodes the first picture of a PNG, JPEG, TIFF, WebP, GIF, BMP, ICO or PNM and turns it upright. The
/// format is told by the content. Size and memory are checked by the header before any pixel is decoded.
[[nodiscard]] std::variant<QImage, ImageError> decodeImage(const QByteArray& bytes);

/// Scaled down to fit a square; smaller images keep their size, and no side becomes 0.
[[nodiscard]] QImage thumbnailOf(const QImage& image, int maxPixelSize);

/// PNG with nothing but the pixels, their density and their colour space: the same picture gives the same
/// bytes, whatever format it came in.
[[nodiscard]] QByteArray encodePng(const QImage& image);

/// The same picture without transparency, as it looks on paper.
[[nodiscard]] QImage onWhite(const QImage& image);

/// Any format that Qt writes; empty when it cannot be encoded.
[[nodiscard]] QByteArray encodeImage(const QImage& image, const char* format);

}  // namespace nimbrel
