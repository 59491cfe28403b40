#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/Platform.h"
#include "platform/macos/AccessibilityPermission.h"
#include "platform/macos/CoreFoundationRef.h"
#include "platform/macos/VisionTextRecognizer.h"

namespace nimbrel {
namespace {

/// Nobody sees a program that was started over the network, or for a user who is not at the screen.
bool hasScreen() {
  const macos::CoreFoundationRef<CFDictionaryRef> session(CGSessionCopyCurrentDictionary());
  return static_cast<bool>(session);
}

}  // namespace

DesktopFacts examineDesktop(const QList<HotKeyProbe>&) {
  DesktopFacts facts;
  facts.kind = DesktopFacts::Kind::mac;
  facts.hasDisplay = hasScreen();
  facts.canPressKeys = macos::AccessibilityPermission().isTrusted();
  // The menu bar, and what is part of the system or of the program. Hot keys are the running program's to
  // ask for: here they would be taken from nobody.
  facts.hasTray = facts.hasDisplay;
  facts.hasSessionBus = true;
  facts.hasLockAction = true;
  facts.hasImageHelper = true;
  facts.recognitionLanguages = macos::recognizableLanguages();
  return facts;
}

}  // namespace nimbrel
