#include "platform/macos/QuickLookController.h"

#import <AppKit/AppKit.h>

#include "platform/macos/values/KeyEvents.h"

@implementation QuickLookController {
  id<NSObject> _closing;
}

- (void)dealloc {
  if (_closing) [NSNotificationCenter.defaultCenter removeObserver:_closing];
}

- (BOOL)previewVisible {
  return QLPreviewPanel.sharedPreviewPanelExists && QLPreviewPanel.sharedPreviewPanel.visible;
}

- (void)orderFront {
  QLPreviewPanel* const preview = QLPreviewPanel.sharedPreviewPanel;
  NSWindow* const typedIn = NSApp.keyWindow;
  preview.dataSource = self;
  preview.delegate = self;
  [preview reloadData];
  [self observeClosing:preview];
  [preview makeKeyAndOrderFront:nil];
  // The arrow keys keep moving the selection, and the preview follows.
  if (typedIn != preview) [typedIn makeKeyWindow];
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
