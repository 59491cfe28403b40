#include "platform/symbols/SystemSymbols.h"

#import <AppKit/AppKit.h>

#include <QPainter>

#include "platform/macos/CoreFoundationRef.h"
#include "platform/macos/Pictures.h"

namespace nimbrel {
namespace {

/// In the middle of a square, as large as fits.
NSRect placed(NSSize size, int side) {
  const CGFloat scale = side / MAX(size.width, size.height);
  const NSSize scaled = NSMakeSize(size.width * scale, size.height * scale);
  return NSMakeRect((side - scaled.width) / 2, (side - scaled.height) / 2, scaled.width, scaled.height);
}

QImage drawn(NSImage* symbol, int pixels) {
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  const macos::CoreFoundationRef<CGColorSpaceRef> colors(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
  const bool done = macos::drawInto(image, colors.get(), ^(CGContextRef context) {
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context flipped:NO];
    [symbol drawInRect:placed(symbol.size, pixels)];
    [NSGraphicsContext restoreGraphicsState];
  });
  return done ? image : QImage();
}

}  // namespace

QImage systemSymbol(const QString& name, int pixels, const QColor& color) {
  @autoreleasepool {
    NSImage* const found = [NSImage imageWithSystemSymbolName:name.toNSString() accessibilityDescription:nil];
    // Drawn at the size in which it is seen, a symbol has the lines for that.
    NSImage* const symbol =
        [found imageWithSymbolConfiguration:[NSImageSymbolConfiguration
                                                configurationWithPointSize:pixels
                                                                    weight:NSFontWeightRegular]];
    if (!symbol || symbol.size.width <= 0 || symbol.size.height <= 0) return {};
    QImage image = drawn(symbol, pixels);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
  }
}

}  // namespace nimbrel
