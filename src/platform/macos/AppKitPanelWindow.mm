#include "platform/macos/AppKitPanelWindow.h"

#import <AppKit/AppKit.h>

#include <QWidget>

#include "platform/macos/FloatingPanel.h"
#include "platform/macos/PanelDelegate.h"
#include "platform/macos/values/ScreenGeometry.h"
#include "platform/macos/values/WindowValues.h"

namespace nimbrel::macos {
namespace {

static_assert(kPanelStyleMask == NSWindowStyleMaskNonactivatingPanel);
static_assert(kPanelCollectionBehavior ==
              (NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary));
static_assert(kPanelBacking == NSBackingStoreBuffered);

double firstScreenHeight() {
  return NSScreen.screens.firstObject.frame.size.height;
}

NSView* viewOf(const QWidget& widget) {
  return (__bridge NSView*)reinterpret_cast<void*>(widget.winId());
}

}  // namespace

AppKitPanelWindow::AppKitPanelWindow(QWidget& widget, QuickLookController* preview)
    : widget_(widget),
      panel_([[FloatingPanel alloc] initWithContentRect:NSMakeRect(0, 0, widget.width(), widget.height())
                                              styleMask:static_cast<NSWindowStyleMask>(kPanelStyleMask)
                                                backing:static_cast<NSBackingStoreType>(kPanelBacking)
                                                  defer:NO]),
      delegate_([[PanelDelegate alloc] init]) {
  panel_.preview = preview;
  configure();
  delegate_.resigned = ^{
    resigned();
  };
  widget_.setWindowFlags(Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
  host_.reset(QWindow::fromWinId(reinterpret_cast<WId>((__bridge void*)panel_.contentView)));
  NSView* const view = viewOf(widget_);
  widget_.windowHandle()->setParent(host_.get());
  view.frame = panel_.contentView.bounds;
  view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
}

void AppKitPanelWindow::configure() {
  panel_.minSize = widget_.minimumSize().toSizeF().toCGSize();
  panel_.maxSize = widget_.maximumSize().toSizeF().toCGSize();
  panel_.opaque = NO;
  panel_.backgroundColor = NSColor.clearColor;
  panel_.hasShadow = YES;
  panel_.level = kPanelLevel;
  panel_.hidesOnDeactivate = NO;
  panel_.collectionBehavior = static_cast<NSWindowCollectionBehavior>(kPanelCollectionBehavior);
  panel_.releasedWhenClosed = NO;
  panel_.delegate = delegate_;
}

AppKitPanelWindow::~AppKitPanelWindow() {
  delegate_.resigned = nil;
  panel_.delegate = nil;
  [panel_ orderOut:nil];
  widget_.hide();
  // Else it would go with the host, from under the widget.
  if (QWindow* const window = widget_.windowHandle()) window->setParent(nullptr);
}

QRect AppKitPanelWindow::frame() const {
  return flipped(QRectF::fromCGRect(panel_.frame), firstScreenHeight()).toRect();
}

void AppKitPanelWindow::setFrame(const QRect& frame) {
  const QSize size = frame.size().expandedTo(widget_.minimumSize()).boundedTo(widget_.maximumSize());
  [panel_ setFrame:flipped(QRectF(QRect(frame.topLeft(), size)), firstScreenHeight()).toCGRect() display:NO];
  // The view has followed; the widget is told at once.
  widget_.resize(size);
  [panel_ invalidateShadow];
}

void AppKitPanelWindow::takeKeyboard() {
  // First the view, so that the toolkit hears that it has the keyboard as soon as the panel has it.
  [panel_ makeFirstResponder:viewOf(widget_)];
  [panel_ makeKeyAndOrderFront:nil];
}

void AppKitPanelWindow::present() {
  // Closing the settings has hidden the program, so that the application before it came forward.
  if (NSApp.hidden) [NSApp unhideWithoutActivation];
  presented_ = true;
  widget_.show();
  takeKeyboard();
  [panel_ invalidateShadow];
}

void AppKitPanelWindow::dismiss(bool) {
  // The panel resigns on its way out, and nobody need be told.
  presented_ = false;
  [panel_ orderOut:nil];
  widget_.hide();
}

void AppKitPanelWindow::whenFocusReturned(std::function<void(bool)> done) {
  // The application in front was active all the time: unless that is this one, it has the keyboard again.
  done(!NSApp.keyWindow);
}

void AppKitPanelWindow::comeForward() {
  if (presented_) takeKeyboard();
}

void AppKitPanelWindow::resigned() {
  if (presented_ && resignHandler_) resignHandler_();
}

}  // namespace nimbrel::macos
