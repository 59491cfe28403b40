#include "platform/macos/BundleCatalog.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <optional>

#include "platform/macos/CoreFoundationRef.h"
#include "platform/macos/values/ApplicationBundles.h"

namespace nimbrel::macos {
namespace {

/// By its description on the disk: a bundle object would be kept in memory for good.
std::optional<InstalledApplication> applicationAt(const QString& path) {
  NSURL* const url = [NSURL fileURLWithPath:path.toNSString() isDirectory:YES];
  const CoreFoundationRef<CFDictionaryRef> description(
      CFBundleCopyInfoDictionaryForURL((__bridge CFURLRef)url));
  NSDictionary* const info = (__bridge NSDictionary*)description.get();
  const id identifier = info[@"CFBundleIdentifier"];
  if (![identifier isKindOfClass:NSString.class]) return std::nullopt;
  // In the user's language, and with the extension only where the user sees extensions.
  QString name = QString::fromNSString([NSFileManager.defaultManager displayNameAtPath:path.toNSString()]);
  if (name.endsWith(QLatin1String(".app"), Qt::CaseInsensitive)) name.chop(4);
  return InstalledApplication{.identifier = QString::fromNSString(identifier), .name = name, .icon = path};
}

}  // namespace

QList<InstalledApplication> BundleCatalog::applications() {
  QList<InstalledApplication> found;
  for (const QString& path : applicationBundles(applicationFolders())) {
    @autoreleasepool {
      if (const auto application = applicationAt(path)) found.append(*application);
    }
  }
  return found;
}

QIcon BundleCatalog::icon(const InstalledApplication& application) const {
  return application.icon.isEmpty() ? QIcon() : icons_.icon(QFileInfo(application.icon));
}

void chooseApplication(QWidget*, std::function<void(const InstalledApplication&)> chosen) {
  NSOpenPanel* const panel = [NSOpenPanel openPanel];
  panel.directoryURL = [NSURL fileURLWithPath:@"/Applications" isDirectory:YES];
  panel.allowedContentTypes = @[ UTTypeApplicationBundle ];
  panel.allowsMultipleSelection = NO;
  panel.canChooseDirectories = NO;
  panel.prompt = QCoreApplication::translate("ApplicationChooser", "Añadir").toNSString();
  __weak NSOpenPanel* const weakPanel = panel;
  [panel beginWithCompletionHandler:^(NSModalResponse response) {
    NSURL* const url = weakPanel.URL;
    if (response != NSModalResponseOK || !url) return;
    if (const auto application = applicationAt(QString::fromNSString(url.path))) chosen(*application);
  }];
}

}  // namespace nimbrel::macos
