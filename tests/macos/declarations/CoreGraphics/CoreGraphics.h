#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma clang assume_nonnull begin

static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  return CGRect{{x, y}, {width, height}};
}

typedef struct CF_BRIDGED_TYPE(id) CGColorSpace* CGColorSpaceRef;
typedef struct CF_BRIDGED_TYPE(id) CGContext* CGContextRef;
typedef struct CF_BRIDGED_TYPE(id) CGImage* CGImageRef;

typedef CF_ENUM(int32_t, CGColorSpaceModel) {
  kCGColorSpaceModelRGB = 1,
};
extern const CFStringRef kCGColorSpaceSRGB;

CGColorSpaceRef _Nullable CGColorSpaceCreateWithName(CFStringRef _Nullable name) CF_RETURNS_RETAINED;
CGColorSpaceRef _Nullable CGColorSpaceRetain(CGColorSpaceRef _Nullable space) CF_RETURNS_RETAINED;
CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef _Nullable space);
bool CGColorSpaceSupportsOutput(CGColorSpaceRef space);
CFDataRef _Nullable CGColorSpaceCopyICCData(CGColorSpaceRef _Nullable space) CF_RETURNS_RETAINED;

size_t CGImageGetWidth(CGImageRef _Nullable image);
size_t CGImageGetHeight(CGImageRef _Nullable image);
size_t CGImageGetBitsPerComponent(CGImageRef _Nullable image);
CGColorSpaceRef _Nullable CGImageGetColorSpace(CGImageRef _Nullable image) CF_RETURNS_NOT_RETAINED;

typedef CF_ENUM(uint32_t, CGImageAlphaInfo) {
  kCGImageAlphaPremultipliedLast = 1,
  kCGImageAlphaPremultipliedFirst = 2,
};
typedef CF_OPTIONS(uint32_t, CGBitmapInfo) {
  kCGBitmapByteOrder16Little = 1 << 12,
  kCGBitmapByteOrder32Little = 2 << 12,
};

CGContextRef _Nullable CGBitmapContextCreate(void* _Nullable data, size_t width, size_t height,
                                             size_t bitsPerComponent, size_t bytesPerRow,
                                             CGColorSpaceRef _Nullable space,
                                             uint32_t bitmapInfo) CF_RETURNS_RETAINED;
void CGContextDrawImage(CGContextRef _Nullable context, CGRect rect, CGImageRef _Nullable image);

typedef struct CF_BRIDGED_TYPE(id) __CGEvent* CGEventRef;
typedef struct CF_BRIDGED_TYPE(id) __CGEventSource* CGEventSourceRef;
typedef uint16_t CGKeyCode;

typedef CF_ENUM(int32_t, CGEventSourceStateID) {
  kCGEventSourceStateCombinedSessionState = 0,
};
typedef CF_ENUM(uint32_t, CGEventTapLocation) {
  kCGAnnotatedSessionEventTap = 2,
};
typedef CF_OPTIONS(uint64_t, CGEventFlags) {
  kCGEventFlagMaskCommand = 0x00100000,
};

CGEventSourceRef _Nullable CGEventSourceCreate(CGEventSourceStateID stateID) CF_RETURNS_RETAINED;
CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source, CGKeyCode virtualKey,
                                                bool keyDown) CF_RETURNS_RETAINED;
void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
void CGEventPost(CGEventTapLocation tap, CGEventRef _Nullable event);

CFDictionaryRef _Nullable CGSessionCopyCurrentDictionary(void) CF_RETURNS_RETAINED;

#pragma clang assume_nonnull end

#ifdef __cplusplus
}
#endif
