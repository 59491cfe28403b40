#pragma once

#include <Availability.h>
#include <TargetConditionals.h>
#include <stddef.h>
#include <stdint.h>

// What every header here says things with.
#if __has_attribute(cf_consumed)
#define CF_CONSUMED __attribute__((cf_consumed))
#endif
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#define CF_BRIDGED_TYPE(type) __attribute__((objc_bridge(type)))
#define CF_ENUM(type, name) \
  enum name : type name;    \
  enum name : type
/// In C++ the flags of a set are plain integers, which can be joined.
#define CF_OPTIONS(type, name) \
  typedef type name;           \
  enum : type
#define NS_ENUM CF_ENUM
#define NS_OPTIONS CF_OPTIONS

#ifdef __cplusplus
extern "C" {
#endif

#pragma clang assume_nonnull begin

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef uint16_t UInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef int32_t OSStatus;
typedef uint32_t FourCharCode;
typedef FourCharCode OSType;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef double CFTimeInterval;
typedef double CGFloat;

typedef struct CGPoint {
  CGFloat x;
  CGFloat y;
} CGPoint;
typedef struct CGSize {
  CGFloat width;
  CGFloat height;
} CGSize;
typedef struct CGRect {
  CGPoint origin;
  CGSize size;
} CGRect;

enum { noErr = 0 };

typedef const void* CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED_TYPE(NSData) __CFData* CFDataRef;
typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;
typedef const struct CF_BRIDGED_TYPE(NSURL) __CFURL* CFURLRef;
typedef const struct __CFAllocator* CFAllocatorRef;

void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFBooleanGetTypeID(void);
CFDictionaryRef _Nullable CFBundleCopyInfoDictionaryForURL(CFURLRef url) CF_RETURNS_RETAINED;

extern const CFStringRef kCFPreferencesCurrentApplication;
Boolean CFPreferencesAppSynchronize(CFStringRef applicationID);

#pragma clang assume_nonnull end

#ifdef __cplusplus
}
#endif
