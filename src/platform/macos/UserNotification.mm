#include "platform/macos/UserNotification.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>
#import <dispatch/dispatch.h>

namespace nimbrel::macos {

namespace {

/// Has the centre take it, and tells when that is done, or is not to be.
void notify(const QString& title, const QString& text, dispatch_block_t done) {
  @autoreleasepool {
    // Outside of a bundle there is no notification centre, and asking for it ends the process.
    if (!NSBundle.mainBundle.bundleIdentifier) return done();
    UNUserNotificationCenter* const center = [UNUserNotificationCenter currentNotificationCenter];
    UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
    content.title = title.toNSString();
    content.body = text.toNSString();
    UNNotificationRequest* const request = [UNNotificationRequest requestWithIdentifier:NSUUID.UUID.UUIDString
                                                                                content:content
                                                                                trigger:nil];
    [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                          completionHandler:^(BOOL granted, NSError*) {
                            if (!granted) return done();
                            [center addNotificationRequest:request
                                     withCompletionHandler:^(NSError*) {
                                       done();
                                     }];
                          }];
  }
}

}  // namespace

void notifyUser(const QString& title, const QString& text) {
  notify(title, text,
         ^{
         });
}

void notifyUserAndWait(const QString& title, const QString& text) {
  constexpr int64_t kPatienceSeconds = 3;
  dispatch_semaphore_t const taken = dispatch_semaphore_create(0);
  notify(title, text, ^{
    dispatch_semaphore_signal(taken);
  });
  dispatch_semaphore_wait(taken, dispatch_time(DISPATCH_TIME_NOW, kPatienceSeconds * int64_t(NSEC_PER_SEC)));
}

}  // namespace nimbrel::macos
