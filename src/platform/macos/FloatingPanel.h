#pragma once

#import <AppKit/AppKit.h>

@class QuickLookController;

/// The panel's window. It takes the keyboard although it has no title bar, and leaves the application in
/// front the active one. Main thread.
@interface FloatingPanel : NSPanel

/// Whose preview the panel controls.
@property(nonatomic, weak, nullable) QuickLookController* preview;

@end
