#include "platform/macos/AppKitOpener.h"

#import <AppKit/AppKit.h>

#include "platform/macos/values/SettingsUrls.h"

namespace nimbrel::macos {

bool openSystemSettings(QStringView place) {
  NSURL* const url = [NSURL URLWithString:place.toString().toNSString()];
  return url && [NSWorkspace.sharedWorkspace openURL:url];
}

bool AppKitOpener::openUrl(const QUrl& url) {
  NSURL* const native = url.toNSURL();
  return native && [NSWorkspace.sharedWorkspace openURL:native];
}

bool AppKitOpener::reveal(const QList<QUrl>& files) {
  NSMutableArray<NSURL*>* const urls = [NSMutableArray array];
  for (const QUrl& file : files) {
    if (NSURL* const url = file.isLocalFile() ? file.toNSURL() : nil) [urls addObject:url];
  }
  if (urls.count == 0) return false;
  [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:urls];
  return true;
}

bool AppKitOpener::openPrivacySettings() {
  return openSystemSettings(kPrivacySettings);
}

bool AppKitOpener::openKeyStore() {
  NSURL* const keychain =
      [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:@"com.apple.keychainaccess"];
  if (!keychain) return false;
  [NSWorkspace.sharedWorkspace openApplicationAtURL:keychain
                                      configuration:[NSWorkspaceOpenConfiguration configuration]
                                  completionHandler:nil];
  return true;
}

}  // namespace nimbrel::macos
