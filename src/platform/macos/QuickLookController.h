#pragma once

#import <Foundation/Foundation.h>
#import <Quartz/Quartz.h>

/// The one item of the system's preview panel, and the keys that close it. Main thread.
@interface QuickLookController : NSObject <QLPreviewPanelDataSource, QLPreviewPanelDelegate>

/// What is shown; nil for nothing.
@property(nonatomic, strong, nullable) NSURL* url;

/// Called when the panel has closed, whoever closed it.
@property(nonatomic, copy, nullable) void (^closed)(void);

@property(nonatomic, readonly) BOOL previewVisible;

/// Shows the panel, and gives the keyboard back to the window that had it.
- (void)orderFront;

/// Takes the panel over, which asks its controller for what it shows.
- (void)control:(nonnull QLPreviewPanel*)preview;

/// Has a visible panel show `url`.
- (void)reload;

/// Takes a visible panel off the screen.
- (void)close;

@end
