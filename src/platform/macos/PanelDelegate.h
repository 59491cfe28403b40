#pragma once

#import <AppKit/AppKit.h>

/// Hears that a window has lost the keyboard. Main thread.
@interface PanelDelegate : NSObject <NSWindowDelegate>

@property(nonatomic, copy, nullable) void (^resigned)(void);

@end
