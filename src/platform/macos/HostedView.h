#pragma once

#import <AppKit/AppKit.h>

class QWidget;

/// A window's content that counts from its top left corner, as the toolkit does.
@interface FlippedView : NSView
@end

namespace nimbrel::macos {

/// The widget's own view. Main thread.
[[nodiscard]] NSView* viewOf(const QWidget& widget);

/// Puts a top-level widget's view into another, which it fills from then on. The toolkit keeps taking it for
/// a top-level window, without a window of its own: keys, menus and its place on the screen are then right.
void hostView(NSView* view, NSView* host);

}  // namespace nimbrel::macos
