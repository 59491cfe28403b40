#include "platform/macos/AppKitKeyReader.h"

#import <AppKit/AppKit.h>

#include <QKeyEvent>

#include "platform/macos/values/KeyEvents.h"

namespace nimbrel::macos {

std::optional<PressedKey> AppKitKeyReader::read(const QKeyEvent& event) const {
  NSEvent* const current = NSApp.currentEvent;
  const bool isBehindIt = current.type == NSEventTypeKeyDown && current.keyCode == event.nativeVirtualKey();
  // A press that the toolkit has kept for later has only what the toolkit knows of it.
  if (!isBehindIt) return pressedKey(event.nativeVirtualKey(), event.nativeModifiers(), event.text());
  return pressedKey(current.keyCode, current.modifierFlags,
                    QString::fromNSString(current.charactersIgnoringModifiers));
}

}  // namespace nimbrel::macos
