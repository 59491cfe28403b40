#pragma once

#include <CoreGraphics/CoreGraphics.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma clang assume_nonnull begin

typedef struct CF_BRIDGED_TYPE(id) CGImageSource* CGImageSourceRef;

extern const CFStringRef kCGImageSourceShouldCache;
extern const CFStringRef kCGImageSourceShouldCacheImmediately;
extern const CFStringRef kCGImageSourceCreateThumbnailFromImageAlways;
extern const CFStringRef kCGImageSourceCreateThumbnailWithTransform;
extern const CFStringRef kCGImageSourceThumbnailMaxPixelSize;
extern const CFStringRef kCGImagePropertyPixelWidth;
extern const CFStringRef kCGImagePropertyPixelHeight;
extern const CFStringRef kCGImagePropertyDPIWidth;
extern const CFStringRef kCGImagePropertyOrientation;

CGImageSourceRef _Nullable CGImageSourceCreateWithData(CFDataRef data,
                                                       CFDictionaryRef _Nullable options) CF_RETURNS_RETAINED;
CFStringRef _Nullable CGImageSourceGetType(CGImageSourceRef source) CF_RETURNS_NOT_RETAINED;
CFDictionaryRef _Nullable CGImageSourceCopyPropertiesAtIndex(
    CGImageSourceRef source, size_t index, CFDictionaryRef _Nullable options) CF_RETURNS_RETAINED;
CGImageRef _Nullable CGImageSourceCreateImageAtIndex(CGImageSourceRef source, size_t index,
                                                     CFDictionaryRef _Nullable options) CF_RETURNS_RETAINED;
CGImageRef _Nullable CGImageSourceCreateThumbnailAtIndex(
    CGImageSourceRef source, size_t index, CFDictionaryRef _Nullable options) CF_RETURNS_RETAINED;

#pragma clang assume_nonnull end

#ifdef __cplusplus
}
#endif
