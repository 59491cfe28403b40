#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <QImage>

namespace nimbrel::macos {

/// Draws into an image through Core Graphics, whose origin is its bottom left corner then: what `draw` is
/// given is this image's. The image keeps its pixels and colours, which are of 8 or 16 bits, premultiplied.
/// False when there is no such context, and nothing is drawn.
bool drawInto(QImage& image, CGColorSpaceRef colors, void (^draw)(CGContextRef));

/// The pixels of a picture with their colour space; deep colour stays deep. A null image when there is no
/// memory for them.
[[nodiscard]] QImage imageOf(CGImageRef picture);

}  // namespace nimbrel::macos
