#include "platform/macos/AppKitPanelWindow.h"

#import <AppKit/AppKit.h>

#include <QTimer>
#include <QWidget>

#include "platform/macos/FloatingPanel.h"
#include "platform/macos/HostedView.h"
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
  panel_.contentView = [[FlippedView alloc] initWithFrame:panel_.contentView.bounds];
  hostView(viewOf(widget_), panel_.contentView);
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
  [viewOf(widget_) removeFromSuperview];
}

QRect AppKitPanelWindow::frame() const {
  return flipped(QRectF::fromCGRect(panel_.frame), firstScreenHeight()).toRect();
}

void AppKitPanelWindow::setFrame(const QRect& frame) {
  const QSize size = frame.size().expandedTo(widget_.minimumSize()).boundedTo(widget_.maximumSize());
  [panel_ setFrame:flipped(QRectF(QRect(frame.topLeft(), size)), firstScreenHeight()).toCGRect() display:NO];
  // The view has followed; the widget is told at once.
  widget_.resize(size);
  shadeAgain();
}

void AppKitPanelWindow::takeKeyboard() {
  // First the view, so that the toolkit hears that it has the keyboard as soon as the panel has it.
  [panel_ makeFirstResponder:viewOf(widget_)];
  [panel_ makeKeyAndOrderFront:nil];
}

void AppKitPanelWindow::present() {
  focus_.forget();
  // Closing the settings has hidden the program, so that the application before it came forward.
  if (NSApp.hidden) [NSApp unhideWithoutActivation];
  presented_ = true;
  widget_.show();
  takeKeyboard();
  shadeAgain();
}

void AppKitPanelWindow::shadeAgain() {
  // The shadow is that of what has been drawn, which is soon.
  [panel_ invalidateShadow];
  QTimer::singleShot(0, &widget_, [panel = panel_] { [panel invalidateShadow]; });
}

void AppKitPanelWindow::dismiss(bool returnFocus) {
  // The panel resigns on its way out, and nobody need be told.
  presented_ = false;
  [panel_ orderOut:nil];
  widget_.hide();
  // Where the user has opened the program itself, it is the active one.
  if (returnFocus) yieldUnlessSeen();
}

void AppKitPanelWindow::whenFocusReturned(std::function<void(bool)> done) {
  focus_.await(std::move(done));
}

void AppKitPanelWindow::comeForward() {
  if (presented_) takeKeyboard();
}

void AppKitPanelWindow::resigned() {
  if (presented_ && resignHandler_) resignHandler_();
}

}  // namespace nimbrel::macos
