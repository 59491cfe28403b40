#pragma once

#include <functional>
#include <memory>

#include "platform/AccessibilityTrust.h"
#include "platform/ApplicationCatalog.h"
#include "platform/DesktopFacts.h"
#include "platform/DeviceAuthenticator.h"
#include "platform/HotKeyRegistrar.h"
#include "platform/ImageCodec.h"
#include "platform/InstanceClient.h"
#include "platform/InstanceHost.h"
#include "platform/KeyReader.h"
#include "platform/KeystrokePoster.h"
#include "platform/LoginItem.h"
#include "platform/Opener.h"
#include "platform/PanelWindow.h"
#include "platform/Pasteboard.h"
#include "platform/PreviewPanel.h"
#include "platform/SecretStore.h"
#include "platform/StatusItem.h"
#include "platform/TerminationSignal.h"
#include "platform/TextRecognizer.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

class QColor;
class QPixmap;

namespace nimbrel {

/// The desktop, one adapter for each port. Members are destroyed last to first.
struct Platform final {
  /// What the adapters share, of whatever type.
  std::shared_ptr<void> foundation;
  std::unique_ptr<InstanceHost> instance;
  std::unique_ptr<TerminationSignal> termination;
  std::unique_ptr<SecretStore> secrets;
  std::unique_ptr<ImageCodec> imageCodec;
  std::unique_ptr<TextRecognizer> textRecognizer;
  std::unique_ptr<Workspace> workspace;
  std::unique_ptr<Opener> opener;
  std::unique_ptr<Pasteboard> pasteboard;
  std::unique_ptr<HotKeyRegistrar> hotKeys;
  std::unique_ptr<KeyReader> keys;
  std::unique_ptr<KeystrokePoster> keystrokes;
  std::unique_ptr<AccessibilityTrust> accessibility;
  std::unique_ptr<UserDefaults> defaults;
  std::unique_ptr<LoginItem> loginItem;
  std::unique_ptr<ApplicationCatalog> applications;
  std::unique_ptr<DeviceAuthenticator> authenticator;
  std::unique_ptr<PreviewPanel> preview;
  /// A folder for what is written for a moment only, the user's own, and in memory where the system has that;
  /// empty where there is none.
  QString temporaryFolder;

  /// Tells the user something in the desktop's own way, without waiting; nothing where the desktop has none.
  std::function<void(const QString& title, const QString& text)> notify;
  /// Shows one of the program's own windows in front of all and gives it the keyboard, since the user has
  /// asked for it.
  std::function<void(QWidget& window)> bringForward;
  /// Makes the panel window around a top-level widget that has not been shown yet.
  std::function<std::unique_ptr<PanelWindow>(QWidget&)> makePanelWindow;
  /// The system's own way of choosing an application, from a window of the program; empty where there is none
  /// and the program shows a list of its own.
  std::function<void(QWidget* parent, std::function<void(const InstalledApplication&)> chosen)>
      chooseApplication;
  /// Makes the status item; `symbol` draws a symbol in a square of so many pixels.
  std::function<std::unique_ptr<StatusItem>(
      std::function<QPixmap(const QString& symbol, int side, const QColor& colour)> symbol)>
      makeStatusItem;
};

/// The adapters of the desktop that the program was built for; called once, on the main thread, after the
/// application object exists.
[[nodiscard]] Platform makePlatform();

/// The way to the running instance, for a process that is none; any application object is enough for it.
[[nodiscard]] std::unique_ptr<InstanceClient> makeInstanceClient();

/// What there is of a desktop without a display: for commands that work on the history itself.
struct HeadlessPlatform final {
  std::unique_ptr<InstanceHost> instance;
  std::unique_ptr<InstanceClient> client;
  /// Shared with a thread that may have to be left behind.
  std::shared_ptr<SecretStore> secrets;
  std::unique_ptr<UserDefaults> defaults;
  std::unique_ptr<DeviceAuthenticator> authenticator;
};
[[nodiscard]] HeadlessPlatform makeHeadlessPlatform();

/// What this desktop has, as far as it can be asked at once; whether these combinations are free among it.
/// Main thread.
[[nodiscard]] DesktopFacts examineDesktop(const QList<HotKeyProbe>& hotKeys);

/// The settings that must be made before the application object exists; called once, before it. False when
/// there is no desktop to run on, which the toolkit would end the process for.
[[nodiscard]] bool preparePlatform();

/// Keeps what the process has in memory from others: no core dumps, and no debugger, but the administrator's.
/// Does nothing in builds that are there to be debugged. Called once, before anything else.
void protectProcess();

}  // namespace nimbrel
