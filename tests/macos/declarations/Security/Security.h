#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma clang assume_nonnull begin

enum : OSStatus {
  errSecSuccess = 0,
  errSecNotAvailable = -25291,
  errSecNoSuchKeychain = -25294,
  errSecDuplicateItem = -25299,
  errSecItemNotFound = -25300,
  errSecNoDefaultKeychain = -25307,
};

extern const CFStringRef kSecClass;
extern const CFStringRef kSecClassGenericPassword;
extern const CFStringRef kSecAttrService;
extern const CFStringRef kSecAttrAccount;
extern const CFStringRef kSecAttrAccessible;
extern const CFStringRef kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly;
extern const CFStringRef kSecValueData;
extern const CFStringRef kSecReturnData;
extern const CFStringRef kSecMatchLimit;
extern const CFStringRef kSecMatchLimitOne;

OSStatus SecItemCopyMatching(CFDictionaryRef query,
                             CFTypeRef _Nullable* _Nullable CF_RETURNS_RETAINED result);
OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef _Nullable* _Nullable CF_RETURNS_RETAINED result);

#pragma clang assume_nonnull end

#ifdef __cplusplus
}
#endif
