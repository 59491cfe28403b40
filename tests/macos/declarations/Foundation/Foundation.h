#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <math.h>
#include <objc/objc.h>
#include <stdbool.h>

#define MAX(a, b) ((a) > (b) ? (a) : (b))
#define NS_STRING_ENUM __attribute__((swift_wrapper(enum)))

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef CGRect NSRect;
typedef CGSize NSSize;
typedef CGPoint NSPoint;

#pragma clang assume_nonnull begin

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
  return NSRect{{x, y}, {w, h}};
}
static inline NSSize NSMakeSize(CGFloat w, CGFloat h) {
  return NSSize{w, h};
}

@class NSString, NSArray, NSDictionary, NSData, NSURL, NSError, NSNotification, NSOperationQueue;

@protocol NSObject
- (BOOL)isKindOfClass:(Class)aClass;
@end

@protocol NSCopying
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
- (instancetype)init;
+ (Class)class;
- (void)dealloc;
- (id)copy;
- (id)mutableCopy;
@end

typedef struct {
  unsigned long state;
  id __unsafe_unretained _Nullable* _Nullable itemsPtr;
  unsigned long* _Nullable mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)length;
@end

typedef NSUInteger NSStringEncoding;
enum { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying>
@property(readonly) NSUInteger length;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString*)aString;
@end

/// The class of the language's own string literals, whose layout the compiler knows.
@interface NSConstantString : NSString {
  const char* _bytes;
  unsigned int _length;
}
@end

@interface NSValue : NSObject
@property(readonly) const char* objCType;
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithLong:(long)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
@property(readonly) int intValue;
@property(readonly) long long longLongValue;
@property(readonly) unsigned long long unsignedLongLongValue;
@property(readonly) double doubleValue;
@end

@interface NSData : NSObject
@property(readonly) NSUInteger length;
@end

@interface NSArray<ObjectType> : NSObject <NSFastEnumeration>
@property(readonly) NSUInteger count;
@property(nullable, readonly) ObjectType firstObject;
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)count;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)array;
- (void)addObject:(ObjectType)object;
@end

@interface NSDictionary<KeyType, ObjectType> : NSObject
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)setObject:(nullable ObjectType)object forKeyedSubscript:(KeyType<NSCopying>)key;
- (void)removeObjectForKey:(KeyType)key;
@end

@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)string;
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDirectory;
@property(nullable, readonly) NSString* absoluteString;
@property(nullable, readonly) NSString* path;
@property(nullable, readonly, copy) NSURL* filePathURL;
@end

@interface NSUUID : NSObject
+ (instancetype)UUID;
@property(readonly) NSString* UUIDString;
@end

@interface NSError : NSObject
@property(readonly) NSString* domain;
@property(readonly) NSInteger code;
@property(readonly) NSString* localizedDescription;
@end

@interface NSBundle : NSObject
@property(class, readonly) NSBundle* mainBundle;
@property(nullable, readonly) NSString* bundleIdentifier;
@end

@interface NSFileManager : NSObject
@property(class, readonly) NSFileManager* defaultManager;
- (NSString*)displayNameAtPath:(NSString*)path;
@end

@interface NSProcessInfo : NSObject
@property(class, readonly) NSProcessInfo* processInfo;
@property(readonly) int processIdentifier;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)key;
- (void)setObject:(nullable id)value forKey:(NSString*)key;
- (void)removeObjectForKey:(NSString*)key;
- (nullable NSDictionary<NSString*, id>*)persistentDomainForName:(NSString*)domain;
@end

typedef NSString* NSNotificationName NS_STRING_ENUM;

@interface NSNotification : NSObject
@property(nullable, readonly) NSDictionary* userInfo;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly) NSOperationQueue* mainQueue;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)object
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

typedef UInt32 AEEventClass;
typedef UInt32 AEEventID;

@interface NSAppleEventDescriptor : NSObject
@end

@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end

extern "C" {
NSString* NSTemporaryDirectory(void);
id _Nullable CFBridgingRelease(CFTypeRef _Nullable CF_CONSUMED object);
}

#pragma clang assume_nonnull end
