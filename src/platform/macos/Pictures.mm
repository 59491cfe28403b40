#include "platform/macos/Pictures.h"

#import <Foundation/Foundation.h>

#include <QColorSpace>

#include "platform/macos/CoreFoundationRef.h"

namespace nimbrel::macos {
namespace {

bool isDeep(CGImageRef picture) {
  return CGImageGetBitsPerComponent(picture) > 8;
}

using Colors = CoreFoundationRef<CGColorSpaceRef>;

Colors screenColors() {
  return Colors(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
}

/// The picture's own colours where they are red, green and blue, else those that every screen has.
Colors colorsOf(CGImageRef picture) {
  const CGColorSpaceRef own = CGImageGetColorSpace(picture);
  const bool fits =
      own && CGColorSpaceGetModel(own) == kCGColorSpaceModelRGB && CGColorSpaceSupportsOutput(own);
  if (fits) return Colors(CGColorSpaceRetain(own));
  return screenColors();
}

QColorSpace described(CGColorSpaceRef colors) {
  const CoreFoundationRef<CFDataRef> profile(CGColorSpaceCopyICCData(colors));
  if (!profile) return QColorSpace(QColorSpace::SRgb);
  return QColorSpace::fromIccProfile(QByteArray::fromCFData(profile.get()));
}

/// How the image's pixels lie in memory (QImage's formats, in Core Graphics' terms).
uint32_t layoutOf(const QImage& image) {
  if (image.format() == QImage::Format_RGBA64_Premultiplied)
    return uint32_t{kCGImageAlphaPremultipliedLast} | uint32_t{kCGBitmapByteOrder16Little};
  return uint32_t{kCGImageAlphaPremultipliedFirst} | uint32_t{kCGBitmapByteOrder32Little};
}

}  // namespace

bool drawInto(QImage& image, CGColorSpaceRef colors, void (^draw)(CGContextRef)) {
  if (image.isNull()) return false;
  image.fill(Qt::transparent);
  const size_t bits = image.format() == QImage::Format_RGBA64_Premultiplied ? 16 : 8;
  const CoreFoundationRef<CGContextRef> context(CGBitmapContextCreate(
      image.bits(), static_cast<size_t>(image.width()), static_cast<size_t>(image.height()), bits,
      static_cast<size_t>(image.bytesPerLine()), colors, layoutOf(image)));
  if (!context) return false;
  draw(context.get());
  return true;
}

namespace {

/// A null image when there is no memory, or no bitmap in these colours.
QImage drawnIn(CGColorSpaceRef colors, CGImageRef picture) {
  const QSize size(static_cast<int>(CGImageGetWidth(picture)), static_cast<int>(CGImageGetHeight(picture)));
  QImage image(size,
               isDeep(picture) ? QImage::Format_RGBA64_Premultiplied : QImage::Format_ARGB32_Premultiplied);
  const bool drawn = drawInto(image, colors, ^(CGContextRef context) {
    CGContextDrawImage(context, CGRectMake(0, 0, size.width(), size.height()), picture);
  });
  if (!drawn) return {};
  image.setColorSpace(described(colors));
  return image;
}

}  // namespace

QImage imageOf(CGImageRef picture) {
  QImage image = drawnIn(colorsOf(picture).get(), picture);
  // Colours of an extended range have no bitmap of whole numbers.
  if (image.isNull()) image = drawnIn(screenColors().get(), picture);
  return image;
}

}  // namespace nimbrel::macos
