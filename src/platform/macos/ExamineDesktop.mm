#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include "platform/Platform.h"
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
  // Not asked for here: whether keys may be pressed, which the system tells of the terminal that a command
  // was started in; and the hot keys, which would be taken from nobody. The menu bar and the rest are part of
  // the system or of the program.
  facts.hasTray = facts.hasDisplay;
  facts.hasSessionBus = true;
  facts.hasLockAction = true;
  facts.hasImageHelper = true;
  facts.recognitionLanguages = macos::recognizableLanguages();
  return facts;
}

}  // namespace nimbrel
