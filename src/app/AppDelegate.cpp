#include "app/AppDelegate.h"

#include <QApplication>
#include <QDir>

#include "app/StatusItemState.h"
#include "capture/LegacyImport.h"
#include "look/Symbols.h"
#include "storage/HistoryRepair.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kSweepDelay = 15s;

}  // namespace

AppDelegate::AppDelegate(Platform& platform, HistoryCipher& cipher, std::unique_ptr<ClipDatabase> database,
                         const QString& storageDirectory)
    : platform_(platform),
      cipher_(cipher),
      storageDirectory_(storageDirectory),
      permission_(*platform.accessibility, *platform.pasteboard, *platform.opener),
      settings_(*platform.defaults),
      blobs_(storageDirectory, cipher, clock_),
      files_(blobs_, *platform.imageCodec),
      database_(std::move(database)),
      imageTexts_(files_, *platform.textRecognizer),
      store_({.settings = settings_.values(),
              .pasteboard = *platform.pasteboard,
              .workspace = *platform.workspace,
              .clock = clock_,
              .database = *database_,
              .grader = grader_,
              .files = files_,
              .images = *platform.imageCodec,
              .imageTexts = imageTexts_,
              .makeId = &QUuid::createUuid}),
      remoteTexts_(store_, clock_),
      lock_(*platform.authenticator, clock_),
      icons_(*platform.applications, kRowIconSize),
      background_(QStringLiteral("Nimbrel.applications")),
      intents_{.store = store_,
               .settings = settings_.values(),
               .lock = lock_,
               .permission = permission_,
               .clock = clock_,
               .pasteClipNow = [this](const ClipItem& clip) { return paster_->pasteClipNow(clip); }} {}

AppDelegate::~AppDelegate() {
  applicationWillTerminate();
}

void AppDelegate::applicationDidFinishLaunching() {
  putUpStatusItem();
  connect(&store_, &ClipboardStore::pauseChanged, this, [this] { refreshStatusItem(); });
  connect(&store_, &ClipboardStore::pauseChanged, this,
          [this](bool paused) { platform_.instance->announceCapture(paused); });
  connect(&store_, &ClipboardStore::queueChanged, this, [this] { refreshStatusItem(); });
  makePanel();
  lock_.setAfterAuthentication([this] { panel_->refocusPanel(); });
  registerHotKeys();
  obeySettings();
  makeSettingsWindow();
  connect(&icons_, &InstalledIcons::unknownAskedFor, this, &AppDelegate::findApplications);
  resumeRecognition();
  // The first seconds belong to the user.
  sweepTimer_.setSingleShot(true);
  connect(&sweepTimer_, &QTimer::timeout, this, [this] { sweepOrphans(); });
  sweepTimer_.start(kSweepDelay);
}

void AppDelegate::putUpStatusItem() {
  // At the density of one: a tray scales what it is given.
  statusItem_ = platform_.makeStatusItem([](const QString& symbol, int side, const QColor& colour) {
    return symbols::pixmap(symbol, side, colour, 1.0);
  });
  statusItem_->show(statusItemState(false, 0));
  statusItem_->setActivationHandler([this] {
    if (panel_) panel_->togglePanel();
  });
}

PanelServices AppDelegate::panelServices() {
  return {
      .store = store_,
      .permission = permission_,
      .opener = *platform_.opener,
      .settings = settings_.values(),
      .clock = clock_,
      .keys = *platform_.keys,
      .keyState = [this] { return cipher_.keyState(); },
      .authenticate =
          [this](std::function<void(bool)> done) { lock_.authenticate(Lock::Reason::clip, std::move(done)); },
      .icons = icons_};
}

QString AppDelegate::previewFolder() const {
  if (platform_.temporaryFolder.isEmpty()) return {};
  return QDir(platform_.temporaryFolder).filePath(QStringLiteral("nimbrel-preview"));
}

void AppDelegate::makePanel() {
  panel_ = std::make_unique<PanelController>(PanelParts{.services = panelServices(),
                                                        .keystrokes = *platform_.keystrokes,
                                                        .defaults = *platform_.defaults,
                                                        .makeWindow = platform_.makePanelWindow,
                                                        .preview = *platform_.preview,
                                                        .sideFiles = files_,
                                                        .previewFolder = previewFolder(),
                                                        .lock = lock_,
                                                        .notify = platform_.notify});
  connect(panel_.get(), &PanelController::settingsRequested, this, &AppDelegate::openSettings);
  connect(panel_.get(), &PanelController::quitRequested, qApp, &QApplication::quit);
  paster_ = std::make_unique<ClipPaster>(ClipPasterParts{.store = store_,
                                                         .permission = permission_,
                                                         .workspace = *platform_.workspace,
                                                         .keystrokes = *platform_.keystrokes,
                                                         .lock = lock_,
                                                         .panel = *panel_});
}

void AppDelegate::makeSettingsWindow() {
  settingsWindow_ = std::make_unique<SettingsWindow>(
      SettingsParts{.settings = settings_,
                    .keys = *platform_.keys,
                    .hotKeys = *dispatcher_,
                    .loginItem = *platform_.loginItem,
                    .applications = *platform_.applications,
                    .workspace = *platform_.workspace,
                    .confirmUser = [this](std::function<void(bool)> done) { confirmUser(std::move(done)); },
                    .isEncrypted = [this] { return cipher_.hasKey(); },
                    .chooseApplication = platform_.chooseApplication},
      platform_.bringForward);
}

void AppDelegate::confirmUser(std::function<void(bool)> done) {
  // Where nobody can be asked, nobody could ever switch the lock off again.
  lock_.ask(Lock::Reason::history,
            [done = std::move(done)](Lock::Answer answer) { done(answer != Lock::Answer::refused); });
}

void AppDelegate::resumeRecognition() {
  const auto interrupted = blobs_.loadPendingTexts();
  imageTexts_.setPendingHandler([this](const auto& ids) { files_.rememberPendingTexts(ids); });
  if (settings_.values().ocrEnabled) store_.recognizeTexts(interrupted);
}

void AppDelegate::registerHotKeys() {
  dispatcher_ = std::make_unique<HotKeyDispatcher>(*platform_.hotKeys);
  hotKey_ = std::make_unique<HotKey>(*dispatcher_, [this] { panel_->togglePanel(); });
  registerHotKey(*hotKey_, settings_.values().hotKey);
  settings_.setHotKeyApplier(applier(*hotKey_, &SettingsValues::hotKey));
  nextHotKey_ = std::make_unique<HotKey>(*dispatcher_, [this] { pasteNextQueued(); });
  registerHotKey(*nextHotKey_, settings_.values().nextHotKey);
  settings_.setNextHotKeyApplier(applier(*nextHotKey_, &SettingsValues::nextHotKey));
}

std::function<bool(const HotKeyCombo&)> AppDelegate::applier(HotKey& hotKey,
                                                             HotKeyCombo SettingsValues::*chosen) {
  return [this, &hotKey, chosen](const HotKeyCombo& combo) {
    if (hotKey.registerCombo(combo)) return true;
    registerHotKey(hotKey, settings_.values().*chosen);
    return false;
  };
}

void AppDelegate::obeySettings() {
  connect(&settings_, &AppSettings::maxUnpinnedChanged, &store_, &ClipboardStore::trimToCapacity);
  connect(&settings_, &AppSettings::ocrEnabledChanged, &store_, &ClipboardStore::recognitionSwitched);
  connect(&settings_, &AppSettings::richEnabledChanged, &store_, &ClipboardStore::renewReadPolicy);
  connect(&settings_, &AppSettings::ignoredAppsChanged, &store_, &ClipboardStore::renewReadPolicy);
}

void AppDelegate::findApplications() {
  background_.run([&catalog = *platform_.applications] { return catalog.applications(); },
                  [this](const QList<InstalledApplication>& found) { icons_.setApplications(found); });
}

void AppDelegate::sweepOrphans() {
  // A file of a clip that may yet come back has no row.
  if (store_.canUndoRemoval()) return sweepTimer_.start();
  const bool belongElsewhere = holdsUnimportedHistory(storageDirectory_, *platform_.defaults) ||
                               !damagedDatabases(storageDirectory_).isEmpty();
  if (!belongElsewhere) files_.sweepOrphans(*database_, store_.filesInUse());
}

void AppDelegate::pasteNextQueued() {
  if (store_.queuedIDs().isEmpty()) return;
  const QUuid id = store_.queuedIDs().first();
  const auto row = store_.items().rowOf(id);
  if (!row || !store_.copyToPasteboard(store_.items().at(*row)->clip, false)) return;
  store_.removeFromQueue(id);
  permission_.recheck();
  if (permission_.accessibilityGranted())
    platform_.keystrokes->postPaste();
  else
    permission_.requestAccessibility();
}

void AppDelegate::registerHotKey(HotKey& hotKey, const HotKeyCombo& combo) {
  if (!hotKey.registerCombo(combo)) logRefusal(combo);
}

void AppDelegate::refreshStatusItem() {
  statusItem_->show(statusItemState(store_.isPaused(), store_.queuedIDs().size()));
}

void AppDelegate::applicationWillTerminate() {
  if (std::exchange(terminated_, true)) return;
  store_.sweepExpired();
  store_.settleRemovals();
  // First what is being graded: its formatting is stored only then.
  grader_.finish();
  files_.finish();
  database_->checkpoint();
  if (panel_) panel_->finishPreview();
}

void AppDelegate::openSettings() {
  panel_->makeWay();
  settingsWindow_->open();
}

void AppDelegate::showPanel() {
  if (panel_->isVisible())
    panel_->refocusPanel();
  else
    panel_->showPanel();
}

void AppDelegate::showCollections() {
  showPanel();
  panel_->chooseFilter();
}

void AppDelegate::showSearch(const QString& text) {
  showPanel();
  panel_->searchFor(text);
}

}  // namespace nimbrel
