#include "platform/macos/KeychainStore.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include "platform/macos/values/KeychainStatus.h"

namespace nimbrel::macos {
namespace {

static_assert(kKeychainSuccess == errSecSuccess);
static_assert(kKeychainItemNotFound == errSecItemNotFound);
static_assert(kKeychainDuplicateItem == errSecDuplicateItem);
static_assert(kKeychainNotAvailable == errSecNotAvailable);
static_assert(kNoSuchKeychain == errSecNoSuchKeychain);
static_assert(kNoDefaultKeychain == errSecNoDefaultKeychain);

NSMutableDictionary* attributesOf(const SecretItem& item) {
  return [@{
    (__bridge id)kSecClass : (__bridge id)kSecClassGenericPassword,
    (__bridge id)kSecAttrService : item.service.toNSString(),
    (__bridge id)kSecAttrAccount : item.account.toNSString(),
  } mutableCopy];
}

}  // namespace

SecretLookup KeychainStore::find(const SecretItem& item) {
  @autoreleasepool {
    NSMutableDictionary* const query = attributesOf(item);
    query[(__bridge id)kSecReturnData] = @YES;
    query[(__bridge id)kSecMatchLimit] = (__bridge id)kSecMatchLimitOne;
    CFTypeRef result = nullptr;
    const OSStatus status = SecItemCopyMatching((__bridge CFDictionaryRef)query, &result);
    const id found = CFBridgingRelease(result);
    if (![found isKindOfClass:NSData.class]) return secretLookup(status, std::nullopt);
    return secretLookup(status, QByteArray::fromNSData(found));
  }
}

int KeychainStore::add(const SecretItem& item, const QByteArray& secret) {
  @autoreleasepool {
    NSMutableDictionary* const attributes = attributesOf(item);
    attributes[(__bridge id)kSecValueData] = secret.toNSData();
    // Once the user has logged in, and on no other device.
    attributes[(__bridge id)kSecAttrAccessible] =
        (__bridge id)kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly;
    return SecItemAdd((__bridge CFDictionaryRef)attributes, nullptr);
  }
}

}  // namespace nimbrel::macos
