#include "platform/macos/HostedView.h"

#include <QWidget>

@implementation FlippedView

- (BOOL)isFlipped {
  return YES;
}

@end

namespace nimbrel::macos {
namespace {

/// The toolkit follows the pointer in the active application only, which the program's hardly ever is.
void followPointerAlways(NSView* view) {
  constexpr NSTrackingAreaOptions kSometimes = NSTrackingActiveInActiveApp | NSTrackingActiveInKeyWindow;
  NSArray<NSTrackingArea*>* const areas = [view.trackingAreas copy];
  for (NSTrackingArea* area in areas) {
    [view removeTrackingArea:area];
    [view addTrackingArea:[[NSTrackingArea alloc]
                              initWithRect:area.rect
                                   options:(area.options & ~kSometimes) | NSTrackingActiveAlways
                                     owner:area.owner
                                  userInfo:area.userInfo]];
  }
}

}  // namespace

NSView* viewOf(const QWidget& widget) {
  return (__bridge NSView*)reinterpret_cast<void*>(widget.winId());
}

void hostView(NSView* view, NSView* host) {
  [host addSubview:view];
  view.frame = host.bounds;
  view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
  followPointerAlways(view);
}

}  // namespace nimbrel::macos
