#include "platform/macos/UserNotification.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>

namespace nimbrel::macos {

void notifyUser(const QString& title, const QString& text) {
  // Outside of a bundle there is no notification centre, and asking for it ends the process.
  if (!NSBundle.mainBundle.bundleIdentifier) return;
  UNUserNotificationCenter* const center = [UNUserNotificationCenter currentNotificationCenter];
  UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
  content.title = title.toNSString();
  content.body = text.toNSString();
  UNNotificationRequest* const request = [UNNotificationRequest requestWithIdentifier:NSUUID.UUID.UUIDString
                                                                              content:content
                                                                              trigger:nil];
  [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                        completionHandler:^(BOOL granted, NSError*) {
                          if (granted) [center addNotificationRequest:request withCompletionHandler:nil];
                        }];
}

}  // namespace nimbrel::macos
