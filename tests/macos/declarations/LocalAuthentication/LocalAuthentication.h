#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef NS_ENUM(NSInteger, LAPolicy) {
  LAPolicyDeviceOwnerAuthentication = 2,
};

@interface LAContext : NSObject
- (BOOL)canEvaluatePolicy:(LAPolicy)policy error:(NSError* __autoreleasing _Nullable* _Nullable)error;
- (void)evaluatePolicy:(LAPolicy)policy
       localizedReason:(NSString*)localizedReason
                 reply:(void (^)(BOOL success, NSError* _Nullable error))reply;
- (void)invalidate;
@end

extern "C" {
extern NSString* const LAErrorDomain;
}

#pragma clang assume_nonnull end
