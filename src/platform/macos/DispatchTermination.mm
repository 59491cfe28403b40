#include "platform/macos/DispatchTermination.h"

#import <AppKit/AppKit.h>
#include <signal.h>

#include "platform/macos/NotificationObserver.h"

namespace nimbrel::macos {
namespace {

dispatch_source_t watch(int signal, const std::shared_ptr<std::function<void()>>& handler) {
  // Else the signal would end the process before anybody hears of it.
  ::signal(signal, SIG_IGN);
  dispatch_source_t const source = dispatch_source_create(
      DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(signal), 0, dispatch_get_main_queue());
  const std::weak_ptr<std::function<void()>> weak = handler;
  dispatch_source_set_event_handler(source, ^{
    const auto called = weak.lock();
    if (called && *called) (*called)();
  });
  dispatch_activate(source);
  return source;
}

}  // namespace

DispatchTermination::DispatchTermination() {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP})
    sources_.push_back(watch(signal, handler_));
  ending_ = std::make_unique<NotificationObserver>(
      NSNotificationCenter.defaultCenter, NSApplicationWillTerminateNotification, nil, ^(NSNotification*) {
        if (lastHandler_) lastHandler_();
      });
}

DispatchTermination::~DispatchTermination() {
  for (const dispatch_source_t& source : sources_)
    dispatch_source_cancel(source);
}

}  // namespace nimbrel::macos
