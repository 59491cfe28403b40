#include "platform/macos/MacInstanceHost.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>

#include <QCoreApplication>
#include <QTimer>

#include "platform/macos/FocusReturn.h"
#include "platform/macos/NotificationObserver.h"

/// Hears that the user has opened the running application.
@interface ReopenHandler : NSObject
@property(nonatomic, copy, nullable) void (^reopened)(void);
- (void)handleReopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply;
@end

@implementation ReopenHandler

- (void)handleReopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply {
  if (self.reopened) self.reopened();
}

@end

namespace nimbrel::macos {

MacInstanceHost::MacInstanceHost(const QString& folder)
    : local_(folder), reopen_([[ReopenHandler alloc] init]) {
  local_.takeUpSystemRequests(*QCoreApplication::instance());
  ReopenHandler* const handler = reopen_;
  // AppKit has put up a handler of its own by then.
  const auto takeUp = ^(NSNotification*) {
    [NSAppleEventManager.sharedAppleEventManager setEventHandler:handler
                                                     andSelector:@selector(handleReopen:withReplyEvent:)
                                                   forEventClass:kCoreEventClass
                                                      andEventID:kAEReopenApplication];
  };
  launched_ = std::make_unique<NotificationObserver>(
      NSNotificationCenter.defaultCenter, NSApplicationDidFinishLaunchingNotification, nil, takeUp);
}

MacInstanceHost::~MacInstanceHost() {
  reopen_.reopened = nil;
  [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                    andEventID:kAEReopenApplication];
}

void MacInstanceHost::setRequests(const InstanceRequests& requests) {
  const auto show = requests.show;
  reopen_.reopened = ^{
    if (show) show();
  };
  InstanceRequests taken = requests;
  // The system makes the program the active one before it gives it a URL.
  if (requests.openUrls)
    taken.openUrls = [open = requests.openUrls](const QStringList& urls) {
      open(urls);
      QTimer::singleShot(0, QCoreApplication::instance(), &yieldUnlessSeen);
    };
  local_.setRequests(taken);
}

}  // namespace nimbrel::macos
