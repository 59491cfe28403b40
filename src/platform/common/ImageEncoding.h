#pragma once

#include <QByteArray>
#include <QImage>

/// Pictures made smaller, and written: by whatever means they were decoded, the same picture gives the same
/// bytes. *Takes* long for large ones; any thread.
namespace nimbrel {

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
