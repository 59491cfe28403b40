#pragma once

#import <AppKit/AppKit.h>

#pragma clang assume_nonnull begin

@class QLPreviewPanel;

@protocol QLPreviewItem <NSObject>
@end

@interface NSURL (QLPreviewConvenienceAdditions) <QLPreviewItem>
@end

@protocol QLPreviewPanelDataSource
- (NSInteger)numberOfPreviewItemsInPreviewPanel:(null_unspecified QLPreviewPanel*)panel;
- (null_unspecified id<QLPreviewItem>)previewPanel:(null_unspecified QLPreviewPanel*)panel
                                previewItemAtIndex:(NSInteger)index;
@end

@protocol QLPreviewPanelDelegate <NSWindowDelegate>
@optional
- (BOOL)previewPanel:(null_unspecified QLPreviewPanel*)panel handleEvent:(null_unspecified NSEvent*)event;
@end

@interface QLPreviewPanel : NSPanel
+ (null_unspecified QLPreviewPanel*)sharedPreviewPanel;
+ (BOOL)sharedPreviewPanelExists;
@property(null_unspecified, assign) id<QLPreviewPanelDataSource> dataSource;
@property(null_unspecified, assign) id delegate;
- (void)reloadData;
@end

@interface NSObject (QLPreviewPanelController)
- (BOOL)acceptsPreviewPanelControl:(null_unspecified QLPreviewPanel*)panel;
- (void)beginPreviewPanelControl:(null_unspecified QLPreviewPanel*)panel;
- (void)endPreviewPanelControl:(null_unspecified QLPreviewPanel*)panel;
@end

#pragma clang assume_nonnull end
