#include "platform/macos/ImageIOCodec.h"

#import <Foundation/Foundation.h>
#import <ImageIO/ImageIO.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/common/ImageEncoding.h"
#include "platform/common/ImageLimits.h"
#include "platform/macos/CoreFoundationRef.h"
#include "platform/macos/Pictures.h"
#include "platform/macos/values/ImageTypes.h"

namespace nimbrel::macos {
namespace {

using Source = CoreFoundationRef<CGImageSourceRef>;

constexpr double kMetersPerInch = 0.0254;

/// What the image's header says.
struct Header {
  QSize upright;
  /// Dots per inch, 0 where it does not say.
  double density = 0;
  /// Whether the pixels are stored as they are seen.
  bool isUpright = true;
};

std::variant<Header, ImageError> headerOf(CGImageSourceRef source) {
  const CFStringRef type = source ? CGImageSourceGetType(source) : nullptr;
  if (!type || !isDecodable(QString::fromCFString(type))) return unreadableImage();
  const CoreFoundationRef<CFDictionaryRef> properties(CGImageSourceCopyPropertiesAtIndex(source, 0, nullptr));
  NSDictionary* const values = (__bridge NSDictionary*)properties.get();
  QSize size([values[(__bridge NSString*)kCGImagePropertyPixelWidth] intValue],
             [values[(__bridge NSString*)kCGImagePropertyPixelHeight] intValue]);
  // From 5 on the sides change places (EXIF's orientations, and TIFF's); 1 is upright, and 0 where none is
  // said.
  const int orientation = [values[(__bridge NSString*)kCGImagePropertyOrientation] intValue];
  if (orientation >= 5) size.transpose();
  if (const auto obstacle = sizeObstacle(size)) return *obstacle;
  return Header{size, [values[(__bridge NSString*)kCGImagePropertyDPIWidth] doubleValue], orientation <= 1};
}

Source sourceOf(const QByteArray& image) {
  const CoreFoundationRef<CFDataRef> data(image.toRawCFData());
  NSDictionary* const options = @{(__bridge NSString*)kCGImageSourceShouldCache : @NO};
  return Source(CGImageSourceCreateWithData(data.get(), (__bridge CFDictionaryRef)options));
}

using Picture = CoreFoundationRef<CGImageRef>;

/// Upright, and no side longer than so many pixels. As it is, where it is both: made smaller, a picture of
/// deep colours may lose them.
Picture pictureOf(CGImageSourceRef source, const Header& header, int maxPixelSize) {
  const int longest = std::max(header.upright.width(), header.upright.height());
  if (header.isUpright && maxPixelSize >= longest)
    return Picture(CGImageSourceCreateImageAtIndex(source, 0, nullptr));
  NSDictionary* const options = @{
    (__bridge NSString*)kCGImageSourceCreateThumbnailFromImageAlways : @YES,
    (__bridge NSString*)kCGImageSourceCreateThumbnailWithTransform : @YES,
    (__bridge NSString*)kCGImageSourceShouldCacheImmediately : @YES,
    (__bridge NSString*)kCGImageSourceThumbnailMaxPixelSize : @(std::clamp(maxPixelSize, 1, longest)),
  };
  return Picture(CGImageSourceCreateThumbnailAtIndex(source, 0, (__bridge CFDictionaryRef)options));
}

void setDensity(QImage& image, double dotsPerInch) {
  const int dots = static_cast<int>(std::lround(std::clamp(dotsPerInch, 0.0, 10'000.0) / kMetersPerInch));
  if (dots == 0) return;
  image.setDotsPerMeterX(dots);
  image.setDotsPerMeterY(dots);
}

std::variant<QImage, ImageError> decode(const QByteArray& bytes, int maxPixelSize, const StopToken& stop) {
  @autoreleasepool {
    const Source source = sourceOf(bytes);
    const auto header = headerOf(source.get());
    if (const auto* const error = std::get_if<ImageError>(&header)) return *error;
    if (stop.stopRequested()) return ImageError{};
    const Picture picture = pictureOf(source.get(), std::get<Header>(header), maxPixelSize);
    QImage image = picture ? imageOf(picture.get()) : QImage();
    if (image.isNull()) return unreadableImage();
    setDensity(image, std::get<Header>(header).density);
    return image;
  }
}

/// In its own size, whatever that is.
std::variant<QImage, ImageError> decodeWhole(const QByteArray& bytes, const StopToken& stop) {
  return decode(bytes, std::numeric_limits<int>::max(), stop);
}

const char* nameOf(ImageCodec::Format format) {
  switch (format) {
    case ImageCodec::Format::tiff:
      return "tiff";
    case ImageCodec::Format::bmp:
      return "bmp";
    case ImageCodec::Format::jpeg:
      break;
  }
  return "jpeg";
}

}  // namespace

std::variant<QSize, ImageError> uprightSize(const QByteArray& image) {
  @autoreleasepool {
    const Source source = sourceOf(image);
    const auto header = headerOf(source.get());
    if (const auto* const error = std::get_if<ImageError>(&header)) return *error;
    return std::get<Header>(header).upright;
  }
}

std::variant<ImageCodec::Encoded, ImageError> ImageIOCodec::encodePng(const QByteArray& image,
                                                                      int maxPixelSize,
                                                                      const StopToken& stop) {
  const auto decoded = decodeWhole(image, stop);
  if (const auto* const error = std::get_if<ImageError>(&decoded)) return *error;
  if (stop.stopRequested()) return ImageError{};
  const QImage& whole = std::get<QImage>(decoded);
  Encoded encoded{nimbrel::encodePng(whole), thumbnailOf(whole, maxPixelSize)};
  if (encoded.png.isEmpty()) return unreadableImage();
  return encoded;
}

std::variant<QImage, ImageError> ImageIOCodec::thumbnail(const QByteArray& image, int maxPixelSize,
                                                         const StopToken& stop) {
  return decode(image, maxPixelSize, stop);
}

std::variant<QByteArray, ImageError> ImageIOCodec::convert(const QByteArray& image, Format format,
                                                           const StopToken& stop) {
  const auto decoded = decodeWhole(image, stop);
  if (const auto* const error = std::get_if<ImageError>(&decoded)) return *error;
  const QImage& whole = std::get<QImage>(decoded);
  const QByteArray bytes = encodeImage(format == Format::jpeg ? onWhite(whole) : whole, nameOf(format));
  if (bytes.isEmpty()) return unreadableImage();
  return bytes;
}

}  // namespace nimbrel::macos
