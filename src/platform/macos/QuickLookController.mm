#include "platform/macos/QuickLookController.h"

#import <AppKit/AppKit.h>

#include "platform/macos/values/KeyEvents.h"
#include "platform/macos/values/WindowValues.h"

@implementation QuickLookController {
  id<NSObject> _closing;
  BOOL _opening;
}

- (void)dealloc {
  if (_closing) [NSNotificationCenter.defaultCenter removeObserver:_closing];
  if (!QLPreviewPanel.sharedPreviewPanelExists) return;
  // The panel outlives everything, and does not notice who has gone.
  QLPreviewPanel* const preview = QLPreviewPanel.sharedPreviewPanel;
  if (preview.dataSource == self) preview.dataSource = nil;
  if (preview.delegate == self) preview.delegate = nil;
}

- (BOOL)previewVisible {
  return _opening || (QLPreviewPanel.sharedPreviewPanelExists && QLPreviewPanel.sharedPreviewPanel.visible);
}

- (void)orderFront {
  QLPreviewPanel* const preview = QLPreviewPanel.sharedPreviewPanel;
  NSWindow* const typedIn = NSApp.keyWindow;
  [self control:preview];
  [self observeClosing:preview];
  // Above the windows of the application in front, which stays the active one.
  preview.hidesOnDeactivate = NO;
  preview.level = nimbrel::macos::kPanelLevel;
  // The window that was typed in hears that it has lost the keyboard before the preview is to be seen.
  _opening = YES;
  [preview makeKeyAndOrderFront:nil];
  [preview orderFrontRegardless];
  _opening = NO;
  // The arrow keys keep moving the selection, and the preview follows.
  if (typedIn != preview) [typedIn makeKeyWindow];
}

- (void)control:(QLPreviewPanel*)preview {
  preview.dataSource = self;
  preview.delegate = self;
  [preview reloadData];
}

- (void)observeClosing:(QLPreviewPanel*)preview {
  if (_closing) return;
  __weak QuickLookController* const weakSelf = self;
  _closing = [NSNotificationCenter.defaultCenter addObserverForName:NSWindowWillCloseNotification
                                                             object:preview
                                                              queue:NSOperationQueue.mainQueue
                                                         usingBlock:^(NSNotification*) {
                                                           [weakSelf tellClosed];
                                                         }];
}

- (void)tellClosed {
  self.url = nil;
  if (self.closed) self.closed();
}

- (void)reload {
  if (self.previewVisible) [QLPreviewPanel.sharedPreviewPanel reloadData];
}

- (void)close {
  if (!self.previewVisible) return;
  [QLPreviewPanel.sharedPreviewPanel orderOut:nil];
  [self tellClosed];
}

- (NSInteger)numberOfPreviewItemsInPreviewPanel:(QLPreviewPanel*)panel {
  return self.url ? 1 : 0;
}

- (id<QLPreviewItem>)previewPanel:(QLPreviewPanel*)panel previewItemAtIndex:(NSInteger)index {
  return self.url;
}

- (BOOL)previewPanel:(QLPreviewPanel*)panel handleEvent:(NSEvent*)event {
  if (event.type != NSEventTypeKeyDown || !nimbrel::macos::closesPreview(event.type, event.keyCode))
    return NO;
  [self close];
  return YES;
}

@end
