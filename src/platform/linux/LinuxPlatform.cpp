#include <QGuiApplication>
#include <QIcon>
#include <QStandardPaths>
#include <QWidget>

#include "platform/Platform.h"
#include "platform/linux/JsonUserDefaults.h"
#include "platform/linux/LibsecretStore.h"
#include "platform/linux/PolkitAuthenticator.h"
#include "platform/linux/UnixTerminationSignal.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/linux/X11KeyReader.h"
#include "platform/linux/X11KeystrokePoster.h"
#include "platform/linux/X11PanelWindow.h"
#include "platform/linux/X11Pasteboard.h"
#include "platform/linux/X11Workspace.h"
#include "platform/linux/XdgApplicationCatalog.h"
#include "platform/linux/XdgAutostart.h"
#include "platform/linux/XdgOpener.h"
#include "platform/linux/dbus/DBusInstanceClient.h"
#include "platform/linux/dbus/DBusInstanceHost.h"
#include "platform/linux/dbus/DesktopNotification.h"
#include "platform/linux/imaging/ConfinedImaging.h"
#include "platform/linux/preview/FilePreview.h"
#include "platform/linux/tray/TrayStatusItem.h"

namespace nimbrel {
namespace {

/// What the X11 adapters share.
struct X11Desktop {
  DesktopEntries entries{DesktopEntries::userFolders()};
  X11Session session;
  /// For programs that ask for an image in another format, and for the preview; whatever they are given,
  /// capture has a helper to itself.
  ConfinedImageCodec conversions{imagingHelperProgram()};
};

class XtestTrust final : public AccessibilityTrust {
 public:
  explicit XtestTrust(std::shared_ptr<X11Desktop> desktop) : desktop_(std::move(desktop)) {}

  [[nodiscard]] bool isTrusted() const override { return isXtestUsable(desktop_->session); }
  /// X11 has neither a dialog nor a setting for this.
  bool request() override { return false; }

 private:
  std::shared_ptr<X11Desktop> desktop_;
};

}  // namespace

bool preparePlatform() {
  // The panel, the hot keys and the pasteboard speak X11, also on desktops where Qt would choose Wayland.
  const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
  if (chosen.isEmpty() || chosen.startsWith("wayland")) qputenv("QT_QPA_PLATFORM", "xcb");
  const XcbConnection display(xcb_connect(nullptr, nullptr));
  return xcb_connection_has_error(display.get()) == 0;
}

std::unique_ptr<InstanceClient> makeInstanceClient() {
  return std::make_unique<DBusInstanceClient>();
}

HeadlessPlatform makeHeadlessPlatform() {
  HeadlessPlatform platform;
  platform.instance = std::make_unique<DBusInstanceHost>();
  platform.client = makeInstanceClient();
  platform.secrets = std::make_unique<LibsecretStore>();
  platform.defaults = std::make_unique<JsonUserDefaults>(userDefaultsPath());
  platform.authenticator = std::make_unique<PolkitAuthenticator>();
  return platform;
}

Platform makePlatform() {
  auto desktop = std::make_shared<X11Desktop>();
  // The theme that every application installs its icon for, also under desktops that name none.
  if (QIcon::fallbackThemeName().isEmpty()) QIcon::setFallbackThemeName(QStringLiteral("hicolor"));
  Platform platform;
  platform.imageCodec = std::make_unique<ConfinedImageCodec>(imagingHelperProgram());
  platform.textRecognizer = std::make_unique<ConfinedTextRecognizer>(imagingHelperProgram());
  auto pasteboard = std::make_unique<X11Pasteboard>(desktop->entries, &desktop->conversions);
  platform.foundation = desktop;
  platform.instance = std::make_unique<DBusInstanceHost>();
  platform.termination = std::make_unique<UnixTerminationSignal>();
  platform.secrets = std::make_unique<LibsecretStore>();
  platform.workspace = std::make_unique<X11Workspace>(desktop->session, desktop->entries);
  platform.opener = std::make_unique<XdgOpener>();
  platform.hotKeys = std::make_unique<X11HotKeyRegistrar>(desktop->session);
  platform.keys = std::make_unique<X11KeyReader>(desktop->session);
  platform.keystrokes = std::make_unique<X11KeystrokePoster>(desktop->session, desktop->entries, *pasteboard);
  platform.accessibility = std::make_unique<XtestTrust>(desktop);
  platform.pasteboard = std::move(pasteboard);
  platform.defaults = std::make_unique<JsonUserDefaults>(userDefaultsPath());
  platform.loginItem = std::make_unique<XdgAutostart>(sessionAutostart());
  platform.applications = std::make_unique<XdgApplicationCatalog>(desktop->entries);
  platform.authenticator = std::make_unique<PolkitAuthenticator>();
  platform.preview = std::make_unique<FilePreview>(desktop->conversions);
  // In memory on every desktop that has a session manager.
  platform.temporaryFolder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  platform.notify = sendNotification;
  platform.bringForward = [](QWidget& window) {
    window.show();
    window.activateWindow();
    window.raise();
  };
  platform.makePanelWindow = [desktop](QWidget& widget) {
    return std::make_unique<X11PanelWindow>(widget, desktop->session);
  };
  platform.makeStatusItem = [](TrayIcon::DrawSymbol symbol) {
    return std::make_unique<TrayStatusItem>(std::move(symbol));
  };
  return platform;
}

}  // namespace nimbrel
