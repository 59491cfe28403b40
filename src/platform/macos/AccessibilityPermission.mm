#include "platform/macos/AccessibilityPermission.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/macos/AppKitOpener.h"
#include "platform/macos/values/SettingsUrls.h"

namespace nimbrel::macos {

bool AccessibilityPermission::isTrusted() const {
  return AXIsProcessTrusted();
}

bool AccessibilityPermission::request() {
  // "AXTrustedCheckOptionPrompt". What it answers is of no use: the user has not decided yet.
  NSDictionary* const options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
  AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
  return openSystemSettings(kAccessibilitySettings);
}

}  // namespace nimbrel::macos
