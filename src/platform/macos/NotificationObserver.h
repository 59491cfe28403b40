#pragma once

#import <Foundation/Foundation.h>

namespace nimbrel::macos {

/// Hears of one notification on the main queue for as long as it lives.
class NotificationObserver final {
 public:
  NotificationObserver(NSNotificationCenter* center, NSNotificationName name, id sender,
                       void (^heard)(NSNotification*))
      : center_(center),
        token_([center addObserverForName:name
                                   object:sender
                                    queue:NSOperationQueue.mainQueue
                               usingBlock:heard]) {}
  ~NotificationObserver() { [center_ removeObserver:token_]; }
  NotificationObserver(const NotificationObserver&) = delete;
  NotificationObserver& operator=(const NotificationObserver&) = delete;

 private:
  NSNotificationCenter* center_;
  id<NSObject> token_;
};

}  // namespace nimbrel::macos
