#import <AppKit/AppKit.h>

#include <QDir>
#include <QPixmap>
#include <QStandardPaths>
#include <QWidget>

#include "platform/Platform.h"
#include "platform/common/LocalInstanceClient.h"
#include "platform/macos/AccessibilityPermission.h"
#include "platform/macos/AppKitKeyReader.h"
#include "platform/macos/AppKitOpener.h"
#include "platform/macos/AppKitPanelWindow.h"
#include "platform/macos/AppKitPasteboard.h"
#include "platform/macos/AppKitWindows.h"
#include "platform/macos/AppKitWorkspace.h"
#include "platform/macos/BundleCatalog.h"
#include "platform/macos/CarbonHotKeys.h"
#include "platform/macos/CoreGraphicsKeystrokes.h"
#include "platform/macos/DispatchTermination.h"
#include "platform/macos/ImageIOCodec.h"
#include "platform/macos/KeychainStore.h"
#include "platform/macos/LocalAuthenticator.h"
#include "platform/macos/MacInstanceHost.h"
#include "platform/macos/MainAppLoginItem.h"
#include "platform/macos/MenuBarItem.h"
#include "platform/macos/NativeUserDefaults.h"
#include "platform/macos/QuickLookController.h"
#include "platform/macos/QuickLookPreview.h"
#include "platform/macos/UnifiedLog.h"
#include "platform/macos/UserNotification.h"
#include "platform/macos/VisionTextRecognizer.h"
#include "platform/macos/values/WindowValues.h"

namespace nimbrel {
namespace {

static_assert(macos::kActivationPolicy == NSApplicationActivationPolicyAccessory);

/// Where the instance is met: beside the history. The system clears the folder for temporary files now and
/// then, also of what is in use.
QString instanceFolder() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
      .filePath(QStringLiteral("Nimbrel"));
}

}  // namespace

bool preparePlatform() {
  macos::installUnifiedLog();
  // Else the toolkit makes the program one with a Dock icon and a menu bar.
  qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
  return true;
}

std::unique_ptr<InstanceClient> makeInstanceClient() {
  return std::make_unique<LocalInstanceClient>(instanceFolder(), macos::notifyUserAndWait);
}

HeadlessPlatform makeHeadlessPlatform() {
  HeadlessPlatform platform;
  platform.instance = std::make_unique<LocalInstanceHost>(instanceFolder());
  platform.client = makeInstanceClient();
  platform.secrets = std::make_unique<macos::KeychainStore>();
  platform.defaults = std::make_unique<macos::NativeUserDefaults>();
  platform.authenticator = std::make_unique<macos::LocalAuthenticator>();
  return platform;
}

Platform makePlatform() {
  [NSApp setActivationPolicy:static_cast<NSApplicationActivationPolicy>(macos::kActivationPolicy)];
  QuickLookController* const quickLook = [[QuickLookController alloc] init];
  Platform platform;
  platform.instance = std::make_unique<macos::MacInstanceHost>(instanceFolder());
  platform.termination = std::make_unique<macos::DispatchTermination>();
  platform.secrets = std::make_unique<macos::KeychainStore>();
  platform.imageCodec = std::make_unique<macos::ImageIOCodec>();
  platform.textRecognizer = std::make_unique<macos::VisionTextRecognizer>();
  platform.workspace = std::make_unique<macos::AppKitWorkspace>();
  platform.opener = std::make_unique<macos::AppKitOpener>();
  platform.pasteboard = std::make_unique<macos::AppKitPasteboard>(*platform.workspace);
  platform.hotKeys = std::make_unique<macos::CarbonHotKeys>();
  platform.keys = std::make_unique<macos::AppKitKeyReader>();
  platform.keystrokes = std::make_unique<macos::CoreGraphicsKeystrokes>();
  platform.accessibility = std::make_unique<macos::AccessibilityPermission>();
  platform.defaults = std::make_unique<macos::NativeUserDefaults>();
  platform.loginItem = std::make_unique<macos::MainAppLoginItem>();
  platform.applications = std::make_unique<macos::BundleCatalog>();
  platform.authenticator = std::make_unique<macos::LocalAuthenticator>();
  platform.preview = std::make_unique<macos::QuickLookPreview>(quickLook);
  platform.temporaryFolder = QString::fromNSString(NSTemporaryDirectory());
  platform.notify = macos::notifyUser;
  platform.bringForward = macos::bringForward;
  platform.chooseApplication = macos::chooseApplication;
  platform.makePanelWindow = [quickLook](QWidget& widget) {
    return std::make_unique<macos::AppKitPanelWindow>(widget, quickLook);
  };
  // The menu bar draws symbols of its own.
  platform.makeStatusItem = [](const auto&) { return std::make_unique<macos::MenuBarItem>(); };
  return platform;
}

}  // namespace nimbrel
