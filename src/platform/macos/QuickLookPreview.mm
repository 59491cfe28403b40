#include "platform/macos/QuickLookPreview.h"

#import <AppKit/AppKit.h>

#include "platform/macos/QuickLookController.h"
#include "platform/macos/values/KeyEvents.h"

namespace nimbrel::macos {

static_assert(kKeyDownMask == NSEventMaskKeyDown);

QuickLookPreview::QuickLookPreview(QuickLookController* controller) : controller_(controller) {
  __weak QuickLookController* const weakController = controller;
  const auto handler = ^NSEvent*(NSEvent* event) {
    QuickLookController* const preview = weakController;
    if (!preview.previewVisible || !closesPreviewAnywhere(event.type, event.keyCode)) return event;
    // The press that opened it may be held down.
    if (!event.ARepeat) [preview close];
    return nil;
  };
  monitor_ = [NSEvent addLocalMonitorForEventsMatchingMask:kKeyDownMask handler:handler];
}

QuickLookPreview::~QuickLookPreview() {
  controller_.closed = nil;
  if (monitor_) [NSEvent removeMonitor:monitor_];
}

bool QuickLookPreview::isVisible() const {
  return controller_.previewVisible;
}

void QuickLookPreview::orderFront(const QRect&) {
  [controller_ orderFront];
}

void QuickLookPreview::reload(const std::optional<QUrl>& item) {
  controller_.url = item ? item->toNSURL() : nil;
  [controller_ reload];
}

void QuickLookPreview::close() {
  [controller_ close];
}

void QuickLookPreview::setCloseHandler(std::function<void()> handler) {
  if (!handler) {
    controller_.closed = nil;
    return;
  }
  controller_.closed = ^{
    handler();
  };
}

}  // namespace nimbrel::macos
