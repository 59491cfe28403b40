#include "platform/macos/CoreGraphicsKeystrokes.h"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>

#include "platform/macos/CoreFoundationRef.h"
#include "platform/macos/values/KeyEvents.h"

namespace nimbrel::macos {
namespace {

static_assert(kPasteFlags == kCGEventFlagMaskCommand);
static_assert(kPasteSourceState == kCGEventSourceStateCombinedSessionState);
static_assert(kPasteTap == kCGAnnotatedSessionEventTap);

void post(CGEventRef event) {
  if (!event) return;
  // These flags and no others, whatever the user still holds.
  CGEventSetFlags(event, static_cast<CGEventFlags>(kPasteFlags));
  CGEventPost(static_cast<CGEventTapLocation>(kPasteTap), event);
}

}  // namespace

void CoreGraphicsKeystrokes::postPaste() {
  if (NSApp.active || NSApp.keyWindow) return;
  const CoreFoundationRef<CGEventSourceRef> source(
      CGEventSourceCreate(static_cast<CGEventSourceStateID>(kPasteSourceState)));
  const CoreFoundationRef<CGEventRef> down(CGEventCreateKeyboardEvent(source.get(), kPasteKeyCode, true));
  const CoreFoundationRef<CGEventRef> up(CGEventCreateKeyboardEvent(source.get(), kPasteKeyCode, false));
  post(down.get());
  post(up.get());
}

}  // namespace nimbrel::macos
