#include "platform/macos/FloatingPanel.h"

#import <Quartz/Quartz.h>

#include "platform/macos/QuickLookController.h"
#include "platform/macos/values/KeyEvents.h"

@implementation FloatingPanel

- (BOOL)canBecomeKeyWindow {
  return YES;
}

- (void)cancelOperation:(id)sender {
  QuickLookController* const preview = self.preview;
  if (preview.previewVisible)
    [preview close];
  else
    [self orderOut:nil];
}

- (void)sendEvent:(NSEvent*)event {
  QuickLookController* const preview = self.preview;
  const bool isKeyDown = event.type == NSEventTypeKeyDown;
  const bool closes = isKeyDown && nimbrel::macos::closesPreviewAnywhere(event.type, event.keyCode);
  if (!closes || !preview.previewVisible) return [super sendEvent:event];
  // The press that opened it may be held down.
  if (!event.ARepeat) [preview close];
}

- (BOOL)acceptsPreviewPanelControl:(QLPreviewPanel*)panel {
  return YES;
}

- (void)beginPreviewPanelControl:(QLPreviewPanel*)panel {
  [self.preview control:panel];
}

- (void)endPreviewPanelControl:(QLPreviewPanel*)panel {
}

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag {
  return [super initWithContentRect:contentRect styleMask:style backing:backingStoreType defer:flag];
}

@end
