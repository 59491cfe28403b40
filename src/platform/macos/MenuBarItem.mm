#include "platform/macos/MenuBarItem.h"

#import <AppKit/AppKit.h>

#include "platform/macos/values/WindowValues.h"

/// Hears of clicks for the item, which does not keep it.
@interface MenuBarTarget : NSObject
@property(nonatomic, copy, nullable) void (^clicked)(void);
- (void)togglePanel:(nullable id)sender;
@end

@implementation MenuBarTarget

- (void)togglePanel:(id)sender {
  if (self.clicked) self.clicked();
}

@end

namespace nimbrel::macos {

MenuBarItem::MenuBarItem()
    : item_([NSStatusBar.systemStatusBar statusItemWithLength:kStatusItemLength]),
      target_([[MenuBarTarget alloc] init]) {
  item_.button.target = target_;
  item_.button.action = @selector(togglePanel:);
  item_.button.imagePosition = NSImageLeading;
}

MenuBarItem::~MenuBarItem() {
  target_.clicked = nil;
  item_.button.target = nil;
  [NSStatusBar.systemStatusBar removeStatusItem:item_];
}

void MenuBarItem::show(const StatusItemState& state) {
  @autoreleasepool {
    NSString* const description = state.description.toNSString();
    NSImage* const image = [NSImage imageWithSystemSymbolName:state.symbol.toNSString()
                                     accessibilityDescription:description];
    [image setTemplate:YES];
    item_.length = state.title.isEmpty() ? kStatusItemLength : kTitledStatusItemLength;
    item_.button.image = image;
    item_.button.title = state.title.toNSString();
    item_.button.toolTip = description;
    item_.button.accessibilityLabel = description;
  }
}

void MenuBarItem::setActivationHandler(std::function<void()> handler) {
  target_.clicked = ^{
    if (handler) handler();
  };
}

}  // namespace nimbrel::macos
