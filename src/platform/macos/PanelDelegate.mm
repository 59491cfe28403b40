#include "platform/macos/PanelDelegate.h"

@implementation PanelDelegate

- (void)windowDidResignKey:(NSNotification*)notification {
  if (self.resigned) self.resigned();
}

@end
