#include "platform/macos/AppKitWorkspace.h"

#import <AppKit/AppKit.h>

#include "platform/macos/NotificationObserver.h"

namespace nimbrel::macos {
namespace {

std::optional<RunningApplication> described(NSRunningApplication* application) {
  if (!application) return std::nullopt;
  return RunningApplication{.identifier = QString::fromNSString(application.bundleIdentifier),
                            .name = QString::fromNSString(application.localizedName),
                            .processId = application.processIdentifier};
}

std::optional<RunningApplication> unlessOwn(const std::optional<RunningApplication>& application) {
  const bool isOwn = application && application->processId == NSProcessInfo.processInfo.processIdentifier;
  return isOwn ? std::nullopt : application;
}

}  // namespace

AppKitWorkspace::AppKitWorkspace() : other_(unlessOwn(frontmostApplication())) {
  NSWorkspace* const workspace = NSWorkspace.sharedWorkspace;
  activation_ = std::make_unique<NotificationObserver>(
      workspace.notificationCenter, NSWorkspaceDidActivateApplicationNotification, nil,
      ^(NSNotification* notification) {
        NSRunningApplication* const activated = notification.userInfo[NSWorkspaceApplicationKey];
        if (const auto other = unlessOwn(described(activated))) other_ = other;
      });
}

AppKitWorkspace::~AppKitWorkspace() = default;

std::optional<RunningApplication> AppKitWorkspace::frontmostApplication() const {
  @autoreleasepool {
    return described(NSWorkspace.sharedWorkspace.frontmostApplication);
  }
}

}  // namespace nimbrel::macos
