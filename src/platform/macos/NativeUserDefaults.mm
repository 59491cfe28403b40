#include "platform/macos/NativeUserDefaults.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/values/StoredNumbers.h"

namespace nimbrel::macos {
namespace {

/// What could not be understood is kept under this key.
NSString* const kKeptKey = @"damagedDefaults";

NSUserDefaults* standard() {
  return NSUserDefaults.standardUserDefaults;
}

DefaultsValue numberValue(NSNumber* number) {
  const bool isBoolean = CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID();
  return defaultsValue({.isBoolean = isBoolean,
                        .type = number.objCType[0],
                        .integer = number.longLongValue,
                        .natural = number.unsignedLongLongValue,
                        .real = number.doubleValue});
}

struct ToObject {
  id operator()(ForeignDefault) const { return nil; }
  id operator()(bool value) const { return @(value); }
  id operator()(qint64 value) const { return @(value); }
  id operator()(const QString& value) const { return value.toNSString(); }
  id operator()(const QByteArray& value) const { return value.toNSData(); }
};

}  // namespace

std::optional<DefaultsValue> NativeUserDefaults::value(const QString& key) const {
  @autoreleasepool {
    const id stored = [standard() objectForKey:key.toNSString()];
    if (!stored) return std::nullopt;
    if ([stored isKindOfClass:NSNumber.class]) return numberValue(stored);
    if ([stored isKindOfClass:NSString.class]) return QString::fromNSString(stored);
    if ([stored isKindOfClass:NSData.class]) return QByteArray::fromNSData(stored);
    return ForeignDefault{};
  }
}

void NativeUserDefaults::set(const QString& key, const DefaultsValue& value) {
  @autoreleasepool {
    if (std::exchange(damaged_, false)) keepDamaged();
    [standard() setObject:std::visit(ToObject(), value) forKey:key.toNSString()];
  }
}

void NativeUserDefaults::keepDamaged() {
  NSString* const domain = NSBundle.mainBundle.bundleIdentifier;
  NSDictionary* const stored = domain ? [standard() persistentDomainForName:domain] : nil;
  if (!stored) return;
  NSMutableDictionary* const kept = [stored mutableCopy];
  [kept removeObjectForKey:kKeptKey];
  [standard() setObject:kept forKey:kKeptKey];
}

bool NativeUserDefaults::remove(const QString& key) {
  @autoreleasepool {
    [standard() removeObjectForKey:key.toNSString()];
    return CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication);
  }
}

}  // namespace nimbrel::macos
