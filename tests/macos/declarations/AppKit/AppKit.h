#pragma once

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@class NSEvent, NSImage, NSPasteboard, NSRunningApplication, NSView, NSWindow, UTType;

typedef NSString* NSPasteboardType NS_STRING_ENUM;
typedef NSString* NSPasteboardReadingOptionKey NS_STRING_ENUM;
typedef CGFloat NSFontWeight;
typedef NSInteger NSWindowLevel;
typedef NSInteger NSModalResponse;

typedef NS_ENUM(NSUInteger, NSEventType) {
  NSEventTypeKeyDown = 10,
};
typedef NS_OPTIONS(unsigned long long, NSEventMask) {
  NSEventMaskKeyDown = 1ULL << NSEventTypeKeyDown,
};
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) {};
typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
  NSWindowStyleMaskTitled = 1 << 0,
  NSWindowStyleMaskClosable = 1 << 1,
  NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};
typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) {
  NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
  NSWindowCollectionBehaviorMoveToActiveSpace = 1 << 1,
  NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};
typedef NS_ENUM(NSUInteger, NSBackingStoreType) {
  NSBackingStoreBuffered = 2,
};
typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
  NSViewWidthSizable = 2,
  NSViewHeightSizable = 16,
};
typedef NS_ENUM(NSUInteger, NSCellImagePosition) {
  NSImageLeading = 7,
};
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
  NSApplicationActivationPolicyAccessory = 1,
};
typedef NS_ENUM(NSInteger, NSPasteboardAccessBehavior) {
  NSPasteboardAccessBehaviorDefault = 0,
} API_AVAILABLE_SINCE(15.4);
enum : NSModalResponse { NSModalResponseOK = 1 };

@interface NSResponder : NSObject
- (void)cancelOperation:(nullable id)sender;
@end

@interface NSColor : NSObject
@property(class, readonly) NSColor* clearColor;
@end

typedef NS_OPTIONS(NSUInteger, NSTrackingAreaOptions) {
  NSTrackingActiveInKeyWindow = 0x20,
  NSTrackingActiveInActiveApp = 0x40,
  NSTrackingActiveAlways = 0x80,
};

@interface NSTrackingArea : NSObject <NSCopying>
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(nullable id)owner
                    userInfo:(nullable NSDictionary*)userInfo;
@property(readonly) NSRect rect;
@property(readonly) NSTrackingAreaOptions options;
@property(nullable, readonly, weak) id owner;
@property(nullable, readonly, copy) NSDictionary* userInfo;
@end

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frameRect;
- (void)addSubview:(NSView*)view;
- (void)removeFromSuperview;
- (void)addTrackingArea:(NSTrackingArea*)trackingArea;
- (void)removeTrackingArea:(NSTrackingArea*)trackingArea;
@property(readonly, copy) NSArray<NSTrackingArea*>* trackingAreas;
@property(readonly, getter=isFlipped) BOOL flipped;
@property(nullable, readonly, assign) NSWindow* window;
@property NSRect frame;
@property NSRect bounds;
@property NSAutoresizingMaskOptions autoresizingMask;
@end

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowDidResignKey:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag;
- (void)setFrame:(NSRect)frame display:(BOOL)display;
- (BOOL)makeFirstResponder:(nullable NSResponder*)responder;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)makeKeyWindow;
- (void)orderOut:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)invalidateShadow;
- (void)sendEvent:(NSEvent*)event;
@property(readonly) NSRect frame;
@property NSWindowStyleMask styleMask;
@property NSWindowCollectionBehavior collectionBehavior;
@property NSWindowLevel level;
@property NSSize minSize;
@property NSSize maxSize;
@property(getter=isOpaque) BOOL opaque;
@property BOOL hasShadow;
@property BOOL hidesOnDeactivate;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly) BOOL canBecomeKeyWindow;
@property(null_resettable, copy) NSColor* backgroundColor;
@property(nullable, strong) NSView* contentView;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@end

@interface NSPanel : NSWindow
@end

@interface NSSavePanel : NSPanel
@property(nullable, copy) NSURL* directoryURL;
@property(null_resettable, copy) NSString* prompt;
@property(copy) NSArray<UTType*>* allowedContentTypes;
@property(nullable, readonly, copy) NSURL* URL;
- (void)beginWithCompletionHandler:(void (^)(NSModalResponse result))handler;
@end

@interface NSOpenPanel : NSSavePanel
+ (NSOpenPanel*)openPanel;
@property BOOL allowsMultipleSelection;
@property BOOL canChooseDirectories;
@end

@interface NSEvent : NSObject
@property(readonly) NSEventType type;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) unsigned short keyCode;
@property(readonly, getter=isARepeat) BOOL ARepeat;
@property(nullable, readonly, copy) NSString* charactersIgnoringModifiers;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor;
@end

@interface NSApplication : NSResponder
@property(nullable, readonly, strong) NSEvent* currentEvent;
@property(nullable, readonly, assign) NSWindow* keyWindow;
@property(readonly, getter=isHidden) BOOL hidden;
@property(readonly, getter=isActive) BOOL active;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (void)hide:(nullable id)sender;
- (void)unhideWithoutActivation;
@end

@interface NSRunningApplication : NSObject
@property(nullable, readonly) NSString* localizedName;
@property(nullable, readonly) NSString* bundleIdentifier;
@property(readonly) int processIdentifier;
@end

@interface NSWorkspaceOpenConfiguration : NSObject
+ (instancetype)configuration;
@end

@interface NSWorkspace : NSObject
@property(class, readonly) NSWorkspace* sharedWorkspace;
@property(readonly) NSNotificationCenter* notificationCenter;
@property(nullable, readonly) NSRunningApplication* frontmostApplication;
- (BOOL)openURL:(NSURL*)url;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)urls;
- (nullable NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier;
- (void)openApplicationAtURL:(NSURL*)url
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^_Nullable)(NSRunningApplication* _Nullable application,
                                                NSError* _Nullable error))completionHandler;
@end

@interface NSPasteboardItem : NSObject
- (BOOL)setData:(NSData*)data forType:(NSPasteboardType)type;
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)type;
@end

@interface NSPasteboard : NSObject
@property(class, readonly, strong) NSPasteboard* generalPasteboard;
@property(readonly) NSInteger changeCount;
@property(nullable, readonly, copy) NSArray<NSPasteboardType>* types;
@property(readonly) NSPasteboardAccessBehavior accessBehavior API_AVAILABLE_SINCE(15.4);
- (NSInteger)clearContents;
- (BOOL)writeObjects:(NSArray*)objects;
- (nullable NSArray*)readObjectsForClasses:(NSArray<Class>*)classes
                                   options:(nullable NSDictionary<NSPasteboardReadingOptionKey, id>*)options;
- (nullable NSString*)stringForType:(NSPasteboardType)dataType;
- (nullable NSData*)dataForType:(NSPasteboardType)dataType;
@end

@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description;
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
- (void)drawInRect:(NSRect)rect;
@property NSSize size;
- (void)setTemplate:(BOOL)isTemplate;
@end

@interface NSGraphicsContext : NSObject
@property(class, nullable, strong) NSGraphicsContext* currentContext;
+ (NSGraphicsContext*)graphicsContextWithCGContext:(CGContextRef)context flipped:(BOOL)flipped;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@end

@interface NSStatusBarButton : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(copy) NSString* title;
@property(nullable, strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@property(nullable, copy) NSString* toolTip;
@property(nullable, copy) NSString* accessibilityLabel;
@end

@interface NSStatusItem : NSObject
@property CGFloat length;
@property(nullable, readonly, strong) NSStatusBarButton* button;
@end

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

extern "C" {
extern __kindof NSApplication* _Null_unspecified NSApp;
extern const NSPasteboardType NSPasteboardTypeString;
extern const NSPasteboardType NSPasteboardTypeFileURL;
extern const NSPasteboardReadingOptionKey NSPasteboardURLReadingFileURLsOnlyKey;
extern const NSNotificationName NSApplicationDidFinishLaunchingNotification;
extern const NSNotificationName NSApplicationDidResignActiveNotification;
extern const NSNotificationName NSApplicationWillTerminateNotification;
extern const NSNotificationName NSWindowWillCloseNotification;
extern const NSNotificationName NSWorkspaceDidActivateApplicationNotification;
extern NSString* const NSWorkspaceApplicationKey;
extern const NSFontWeight NSFontWeightRegular;
}

#pragma clang assume_nonnull end
