#include "platform/macos/MainAppLoginItem.h"

#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/values/SystemStates.h"

namespace nimbrel::macos {
namespace {

static_assert(static_cast<NSInteger>(LoginItemStatus::enabled) == SMAppServiceStatusEnabled);
static_assert(static_cast<NSInteger>(LoginItemStatus::requiresApproval) ==
              SMAppServiceStatusRequiresApproval);

LoginItemStatus status() {
  return static_cast<LoginItemStatus>(SMAppService.mainAppService.status);
}

}  // namespace

bool MainAppLoginItem::isEnabled() const {
  @autoreleasepool {
    return status() == LoginItemStatus::enabled;
  }
}

std::optional<QString> MainAppLoginItem::setEnabled(bool enabled) {
  @autoreleasepool {
    NSError* error = nil;
    SMAppService* const service = SMAppService.mainAppService;
    const bool done =
        enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
    if (!done && error) return QString::fromNSString(error.localizedDescription);
    return loginItemObstacle(status(), enabled);
  }
}

}  // namespace nimbrel::macos
