#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

#include "app/ClipPaster.h"
#include "app/PanelController.h"
#include "app/RemoteTexts.h"
#include "app/SettingsWindow.h"
#include "app/hotkeys/HotKey.h"
#include "app/hotkeys/HotKeyDispatcher.h"
#include "app/permission/PermissionState.h"
#include "capture/Background.h"
#include "capture/ClipFiles.h"
#include "capture/ClipboardStore.h"
#include "capture/DetectingTextGrader.h"
#include "capture/ImageTextReader.h"
#include "intents/IntentServices.h"
#include "look/icons/InstalledIcons.h"
#include "platform/Platform.h"
#include "settings/model/AppSettings.h"
#include "storage/BlobFiles.h"
#include "storage/ClipDatabase.h"
#include "storage/HistoryCipher.h"

namespace nimbrel {

/// The composition root: owns every long-lived object, in the order in which they are made, and wires them.
/// Main thread.
class AppDelegate final : public QObject {
 public:
  /// Loads the history and starts to capture. The cipher is ready to use without waiting for the user; it and
  /// the platform outlive the delegate.
  AppDelegate(Platform& platform, HistoryCipher& cipher, std::unique_ptr<ClipDatabase> database,
              const QString& storageDirectory);
  ~AppDelegate() override;

  /// Puts up the status item, the panel and the hot keys.
  void applicationDidFinishLaunching();

  /// Removes what has expired, finishes what is being stored and folds the database's log, *waiting* for the
  /// disk and some seconds at most for images. Runs once, however often called.
  void applicationWillTerminate();

  [[nodiscard]] ClipboardStore& store() { return store_; }

  /// The user's choices.
  [[nodiscard]] AppSettings& settings() { return settings_; }

  /// For whoever automates the program, once it has finished launching.
  [[nodiscard]] const IntentServices& intentServices() const { return intents_; }

  /// Shows the settings in place of the panel.
  void openSettings();

  /// The settings window, null before it was first opened.
  [[nodiscard]] SettingsView* settingsView() const { return settingsWindow_->view(); }

  /// Shows the panel, for a second start of the program.
  void showPanel();
  /// The same with the collections to choose from.
  void showCollections();
  /// The same with a text looked for.
  void showSearch(const QString& text);

  /// Takes in the texts of the program's own URLs.
  void openUrls(const QStringList& urls) { remoteTexts_.openUrls(urls); }

 private:
  void putUpStatusItem();
  [[nodiscard]] QString previewFolder() const;
  void makePanel();
  [[nodiscard]] PanelServices panelServices();
  void registerHotKeys();
  void registerHotKey(HotKey& hotKey, const HotKeyCombo& combo);
  [[nodiscard]] std::function<bool(const HotKeyCombo&)> applier(HotKey& hotKey,
                                                                HotKeyCombo SettingsValues::*chosen);
  void makeSettingsWindow();
  void confirmUser(std::function<void(bool)> done);
  void resumeRecognition();
  void obeySettings();
  void refreshStatusItem();
  void pasteNextQueued();
  void sweepOrphans();
  void findApplications();

  Platform& platform_;
  HistoryCipher& cipher_;
  const QString storageDirectory_;
  SystemClock clock_;
  PermissionState permission_;
  AppSettings settings_;
  BlobFiles blobs_;
  // Before what asks for its files to be removed, and so outliving it.
  ClipFiles files_;
  std::unique_ptr<ClipDatabase> database_;
  DetectingTextGrader grader_;
  ImageTextReader imageTexts_;
  ClipboardStore store_;
  RemoteTexts remoteTexts_;
  Lock lock_;
  InstalledIcons icons_;
  Background background_;
  std::unique_ptr<StatusItem> statusItem_;
  std::unique_ptr<PanelController> panel_;
  std::unique_ptr<ClipPaster> paster_;
  IntentServices intents_;
  std::unique_ptr<HotKeyDispatcher> dispatcher_;
  std::unique_ptr<HotKey> hotKey_;
  std::unique_ptr<HotKey> nextHotKey_;
  std::unique_ptr<SettingsWindow> settingsWindow_;
  QTimer sweepTimer_;
  bool terminated_ = false;
  /// Nothing activates the program when the panel is shown; kept for desktops that may need it.
  [[maybe_unused]] bool activateOnShow_ = false;
};

}  // namespace nimbrel
