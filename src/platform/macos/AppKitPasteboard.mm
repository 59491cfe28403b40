#include "platform/macos/AppKitPasteboard.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/PasteboardTypes.h"
#include "platform/macos/values/PasteboardReading.h"
#include "platform/macos/values/SystemStates.h"

namespace nimbrel::macos {
namespace {

NSPasteboard* general() {
  return NSPasteboard.generalPasteboard;
}

class GeneralPasteboardReader final : public PasteboardReader {
 public:
  QStringList types() override {
    QStringList names;
    for (NSString* type in general().types)
      names.append(QString::fromNSString(type));
    return names;
  }

  QList<QUrl> fileUrls() override {
    QList<QUrl> files;
    NSArray* const found = [general() readObjectsForClasses:@[ NSURL.class ]
                                                    options:@{
                                                      NSPasteboardURLReadingFileURLsOnlyKey : @YES
                                                    }];
    for (NSURL* url in found) {
      // Not the number that a file has on its disk, but where it is.
      NSURL* const path = url.filePathURL;
      if (path) files.append(QUrl::fromNSURL(path));
    }
    return files;
  }

  Reading<QString> text(qint64 maxBytes) override {
    NSString* const text = [general() stringForType:NSPasteboardTypeString];
    if (!text) return {};
    // At least one byte a unit, also where a text cannot be encoded and has no length in bytes.
    const NSUInteger encoded = [text lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
    const NSUInteger bytes = encoded > 0 ? encoded : text.length;
    if (bytes > static_cast<NSUInteger>(maxBytes)) return {.content = std::nullopt, .isTooLarge = true};
    return {.content = QString::fromNSString(text), .isTooLarge = false};
  }

  Reading<QByteArray> data(const QString& type, qint64 maxBytes) override {
    NSData* const data = [general() dataForType:type.toNSString()];
    if (!data) return {};
    if (data.length > static_cast<NSUInteger>(maxBytes)) return {.content = std::nullopt, .isTooLarge = true};
    return {.content = QByteArray::fromNSData(data), .isTooLarge = false};
  }
};

void offer(NSPasteboardItem* item, QStringView type, const std::optional<QByteArray>& bytes) {
  if (bytes) [item setData:bytes->toNSData() forType:type.toString().toNSString()];
}

/// One item for each file, or one for all else; texts and marks go with the first.
NSArray<NSPasteboardItem*>* itemsOf(const PasteboardContent& content) {
  NSMutableArray<NSPasteboardItem*>* const items = [NSMutableArray array];
  for (const QUrl& url : content.fileUrls) {
    NSPasteboardItem* const item = [[NSPasteboardItem alloc] init];
    [item setString:url.toString(QUrl::FullyEncoded).toNSString() forType:NSPasteboardTypeFileURL];
    [items addObject:item];
  }
  if (items.count == 0) [items addObject:[[NSPasteboardItem alloc] init]];
  NSPasteboardItem* const first = items.firstObject;
  if (content.text) [first setString:content.text->toNSString() forType:NSPasteboardTypeString];
  offer(first, pasteboardType::rtf, content.rtf);
  offer(first, pasteboardType::html, content.html);
  offer(first, pasteboardType::png, content.png);
  offer(first, pasteboardType::tiff, content.tiff);
  if (content.concealed) offer(first, pasteboardType::concealed, QByteArray());
  return items;
}

}  // namespace

AppKitPasteboard::AppKitPasteboard(const Workspace& workspace)
    : workspace_(workspace), known_(changeCount()) {}

Pasteboard::Access AppKitPasteboard::access() const {
  // Before that every program could read what others copy, and the SDKs knew of nothing else.
#if __MAC_OS_X_VERSION_MAX_ALLOWED >= 150400
  if (@available(macOS 15.4, *)) return pasteboardAccess(general().accessBehavior);
#endif
  return Access::standard;
}

qint64 AppKitPasteboard::changeCount() const {
  return general().changeCount;
}

qint64 AppKitPasteboard::remember(const std::optional<QString>& text) {
  known_ = changeCount();
  text_ = text;
  return known_;
}

std::optional<PasteboardSnapshot> AppKitPasteboard::readChange() {
  // A timer reads, and hours may pass until the next event, after which AppKit lets go of what was read.
  @autoreleasepool {
    const qint64 current = changeCount();
    if (current == known_) return std::nullopt;
    GeneralPasteboardReader reader;
    const auto snapshot = readSnapshot(reader, policy_, current, workspace_.frontmostApplication());
    // Somebody may have copied while this was read: then it is half of one and half of the other, and the
    // whole of the other comes next.
    if (changeCount() != current) return std::nullopt;
    remember(snapshot.text);
    return snapshot;
  }
}

QList<PasteboardSnapshot> AppKitPasteboard::changesAfter(qint64 count) {
  QList<PasteboardSnapshot> changes;
  for (auto& change : {std::exchange(missed_, std::nullopt), readChange()}) {
    if (change && change->changeCount > count) changes.append(*change);
  }
  return changes;
}

std::optional<QString> AppKitPasteboard::currentText() const {
  return changeCount() == known_ ? text_ : std::nullopt;
}

std::optional<qint64> AppKitPasteboard::write(const PasteboardContent& content) {
  @autoreleasepool {
    if (auto change = readChange()) missed_ = std::move(change);
    [general() clearContents];
    const bool written = [general() writeObjects:itemsOf(content)];
    const qint64 count = remember(written ? content.text : std::nullopt);
    return written ? std::optional(count) : std::nullopt;
  }
}

std::optional<qint64> AppKitPasteboard::clearIfUnchanged(qint64 count) {
  if (changeCount() != count) return std::nullopt;
  [general() clearContents];
  return remember(std::nullopt);
}

}  // namespace nimbrel::macos
