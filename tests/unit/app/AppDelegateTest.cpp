#include "app/AppDelegate.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <algorithm>

#include "app/HistoryOpening.h"
#include "app/Localization.h"
#include "app/hotkeys/HotKeyRecorder.h"
#include "platform/PasteboardTypes.h"
#include "storage/RandomSource.h"
#include "storage/StorageDirectory.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace testing;

/// The whole program on a desktop of fakes.
class AppDelegateTest : public ::testing::Test {
 protected:
  AppDelegateTest() {
    keep(platform.instance, instance);
    keep(platform.secrets, secrets);
    keep(platform.workspace, workspace);
    keep(platform.pasteboard, pasteboard);
    keep(platform.opener, opener);
    keep(platform.hotKeys, hotKeys);
    keep(platform.keystrokes, keystrokes);
    keep(platform.keys, keys);
    keep(platform.loginItem, loginItem);
    keep(platform.applications, applications);
    keep(platform.accessibility, trust);
    keep(platform.defaults, defaults);
    keep(platform.imageCodec, codec);
    keep(platform.textRecognizer, recognizer);
    keep(platform.authenticator, authenticator);
    keep(platform.preview, preview);
    platform.temporaryFolder = home.filePath(u"run"_s);
    platform.bringForward = [](QWidget& window) { window.show(); };
    platform.makePanelWindow = [this](QWidget& widget) {
      steps.append(u"panel"_s);
      panel = &widget;
      auto made = std::make_unique<FakePanelWindow>(widget);
      panelWindow = made.get();
      return made;
    };
    platform.makeStatusItem = [this](const auto&) {
      steps.append(u"status item"_s);
      auto made = std::make_unique<FakeStatusItem>();
      statusItem = made.get();
      return made;
    };
    cipher = std::make_unique<HistoryCipher>(*platform.secrets, random);
    start();
  }
  ~AppDelegateTest() override { delegate.reset(); }

  void start() {
    delegate = std::make_unique<AppDelegate>(
        platform, *cipher, openHistory(directory, *cipher, *platform.defaults, clock), directory);
    delegate->applicationDidFinishLaunching();
  }
  void copy(const QString& text) {
    pasteboard->copyText(text);
    delegate->store().tick();
  }
  [[nodiscard]] QUuid idAt(qsizetype row) const { return delegate->store().items().at(row)->clip.id; }
  /// Records a combination for the panel in the settings window.
  void record(const PressedKey& key) {
    delegate->openSettings();
    QWidget* const recorder = delegate->settingsView()->findChild<HotKeyRecorder*>();
    recorder->findChild<QPushButton*>()->click();
    keys->next = key;
    QTest::keyClick(recorder->findChild<KeyCaptureView*>(), Qt::Key_X);
  }
  [[nodiscard]] bool isPanelVisible() const { return panel->isVisible(); }
  [[nodiscard]] QMenu* openClipMenu() {
    QTest::keyClick(panel->findChild<QLineEdit*>(u"searchField"_s), Qt::Key_F10, Qt::ShiftModifier);
    return panel->findChild<QMenu*>(u"clipMenu"_s);
  }
  [[nodiscard]] QCheckBox* lockSwitch() {
    const auto boxes = delegate->settingsView()->findChildren<QCheckBox*>();
    return *std::find_if(boxes.begin(), boxes.end(), [](const QCheckBox* box) {
      return box->text() == u"Proteger datos sensibles con Touch ID";
    });
  }
  void pressNext() {
    for (auto it = hotKeys->registered.begin(); it != hotKeys->registered.end(); ++it) {
      if (it->keyCode != defaultNextHotKey().keyCode) continue;
      hotKeys->handler(it.key());
      return QCoreApplication::processEvents();
    }
    FAIL() << "the hot key is not registered";
  }

  LogRecorder log;
  QTemporaryDir home;
  QString directory = makeStorageDirectory(home.path());
  SystemClock clock;
  SystemRandom random;
  Platform platform;
  FakeInstanceHost* instance = nullptr;
  FakeSecretStore* secrets = nullptr;
  FakeWorkspace* workspace = nullptr;
  FakePasteboard* pasteboard = nullptr;
  FakeOpener* opener = nullptr;
  FakeHotKeyRegistrar* hotKeys = nullptr;
  FakeKeystrokePoster* keystrokes = nullptr;
  FakeKeyReader* keys = nullptr;
  FakeLoginItem* loginItem = nullptr;
  FakeApplicationCatalog* applications = nullptr;
  FakeAccessibilityTrust* trust = nullptr;
  FakeUserDefaults* defaults = nullptr;
  FakeImageCodec* codec = nullptr;
  FakeTextRecognizer* recognizer = nullptr;
  FakeDeviceAuthenticator* authenticator = nullptr;
  FakePreviewPanel* preview = nullptr;
  FakeStatusItem* statusItem = nullptr;
  FakePanelWindow* panelWindow = nullptr;
  QWidget* panel = nullptr;
  /// What was put up, in order.
  QStringList steps;
  std::unique_ptr<HistoryCipher> cipher;
  std::unique_ptr<AppDelegate> delegate;

 private:
  template <typename Port, typename Fake>
  static void keep(std::unique_ptr<Port>& port, Fake*& fake) {
    auto made = std::make_unique<Fake>();
    fake = made.get();
    port = std::move(made);
  }
};

TEST_F(AppDelegateTest, TheNextHotKeyPastesTheQueuedClipsOneAfterTheOther) {
  copy(u"a"_s);
  copy(u"b"_s);
  delegate->store().addToQueue(idAt(1));
  delegate->store().addToQueue(idAt(0));
  EXPECT_EQ(statusItem->state.title, u"2");
  EXPECT_EQ(statusItem->state.description, u"Nimbrel: 2 en cola");
  pressNext();
  EXPECT_EQ(pasteboard->text, u"a"_s);
  EXPECT_EQ(statusItem->state.title, u"1");
  pressNext();
  EXPECT_EQ(pasteboard->text, u"b"_s);
  EXPECT_EQ(keystrokes->pastes, 2);
  EXPECT_EQ(statusItem->state.title, QString());
}

TEST_F(AppDelegateTest, AutomationPastesWhereTheUserIs) {
  copy(u"a"_s);
  const ClipItem clip = delegate->store().items().at(0)->clip;
  EXPECT_EQ(delegate->intentServices().pasteClipNow(clip), std::nullopt);
  EXPECT_EQ(pasteboard->writes.size(), 1);
  EXPECT_EQ(keystrokes->pastes, 1);
}

TEST_F(AppDelegateTest, AutomationWithoutTrustAsksForItAndCopiesNothing) {
  copy(u"a"_s);
  trust->trusted = false;
  const ClipItem clip = delegate->store().items().at(0)->clip;
  EXPECT_EQ(delegate->intentServices().pasteClipNow(clip), BrevinIntentError::accessibilityRequired);
  EXPECT_EQ(trust->requests, 1);
  EXPECT_TRUE(pasteboard->writes.isEmpty());
  EXPECT_EQ(keystrokes->pastes, 0);
}

TEST_F(AppDelegateTest, AutomationPressesNothingWhenTheClipCannotBeCopied) {
  copy(u"a"_s);
  pasteboard->failWrites = true;
  const ClipItem clip = delegate->store().items().at(0)->clip;
  EXPECT_EQ(delegate->intentServices().pasteClipNow(clip), BrevinIntentError::emptyHistory);
  EXPECT_EQ(keystrokes->pastes, 0);
}

TEST_F(AppDelegateTest, AutomationDoesNotPasteIntoThePanel) {
  copy(u"a"_s);
  delegate->showPanel();
  const ClipItem clip = delegate->store().items().at(0)->clip;
  EXPECT_EQ(delegate->intentServices().pasteClipNow(clip), std::nullopt);
  EXPECT_FALSE(isPanelVisible());
  EXPECT_EQ(keystrokes->pastes, 0);
  ASSERT_TRUE(QTest::qWaitFor([this] { return static_cast<bool>(panelWindow->focusHandler); }));
  panelWindow->focusHandler(true);
  EXPECT_EQ(keystrokes->pastes, 1);
}

TEST_F(AppDelegateTest, AutomationWaitsUntilTheKeyboardIsBackFromThePrompt) {
  delegate->settings().setLockMode(LockMode::sensitiveOnly);
  copy(u"a"_s);
  const ClipItem clip = delegate->store().items().at(0)->clip;
  const IntentServices& services = delegate->intentServices();
  const auto paste = [&](bool) { EXPECT_EQ(services.pasteClipNow(clip), std::nullopt); };
  workspace->front = RunningApplication{u"editor"_s, u"Editor"_s, 7};
  services.lock.authenticate(Lock::Reason::history, paste);
  workspace->front = RunningApplication{u"prompt"_s, u"Prompt"_s, 8};
  authenticator->reply(AuthenticationReply::Outcome::proven);
  EXPECT_EQ(keystrokes->pastes, 0);
  workspace->front = RunningApplication{u"editor"_s, u"Editor"_s, 7};
  EXPECT_TRUE(QTest::qWaitFor([this] { return keystrokes->pastes == 1; }));
}

TEST_F(AppDelegateTest, AutomationPastesNothingElsewhereAfterThePrompt) {
  delegate->settings().setLockMode(LockMode::sensitiveOnly);
  copy(u"a"_s);
  const ClipItem clip = delegate->store().items().at(0)->clip;
  const IntentServices& services = delegate->intentServices();
  workspace->front = RunningApplication{u"editor"_s, u"Editor"_s, 7};
  services.lock.authenticate(Lock::Reason::history,
                             [&](bool) { EXPECT_EQ(services.pasteClipNow(clip), std::nullopt); });
  workspace->front = RunningApplication{u"chat"_s, u"Chat"_s, 9};
  authenticator->reply(AuthenticationReply::Outcome::proven);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !log.lines().isEmpty(); }));
  EXPECT_TRUE(log.lines().last().startsWith(u"No se pegó"));
  EXPECT_EQ(keystrokes->pastes, 0);
}

TEST_F(AppDelegateTest, AnnouncesThatCaptureIsPaused) {
  delegate->store().setPaused(true);
  delegate->store().setPaused(true);
  delegate->store().setPaused(false);
  EXPECT_EQ(instance->announced, (QList<bool>{true, false}));
}

TEST_F(AppDelegateTest, ShowsThePanelWithATextLookedFor) {
  copy(u"pan"_s);
  delegate->showSearch(u"pan"_s);
  EXPECT_TRUE(isPanelVisible());
  EXPECT_EQ(panel->findChild<QLineEdit*>(u"searchField"_s)->text(), u"pan");
}

TEST_F(AppDelegateTest, ShowsThePanelWithTheCollectionsToChooseFrom) {
  copy(u"pan"_s);
  delegate->store().setCollection(idAt(0), u"compra"_s);
  delegate->showCollections();
  EXPECT_TRUE(isPanelVisible());
  QMenu* const menu = panel->findChild<QMenu*>(u"filterMenu"_s);
  ASSERT_TRUE(menu);
  EXPECT_TRUE(menu->isVisible());
  menu->close();
}

TEST_F(AppDelegateTest, ComesUpInOrder) {
  delegate.reset();
  steps.clear();
  hotKeys->taken = {{9, 768}, {45, 768}};
  start();
  // The refusals tell when the hot keys were tried.
  EXPECT_EQ(steps, (QStringList{u"status item"_s, u"panel"_s}));
  EXPECT_EQ(log.lines(), (QStringList{u"No se pudo registrar ⇧⌘V: puede que otra app lo use."_s,
                                      u"No se pudo registrar ⇧⌘N: puede que otra app lo use."_s}));
  EXPECT_EQ(statusItem->state, (StatusItemState{u"doc.on.clipboard"_s, u"Nimbrel"_s, {}}));
  statusItem->handler();
  EXPECT_TRUE(isPanelVisible());
}

TEST_F(AppDelegateTest, ReadsNothingMoreOfAnApplicationThatIsIgnoredFromNowOn) {
  delegate->settings().setIgnoredApps({{.bundleID = u"com.example.vault"_s, .name = u"Vault"_s}});
  EXPECT_EQ(pasteboard->policy.ignoredApplications, QSet<QString>{u"com.example.vault"_s});
}

TEST_F(AppDelegateTest, WhatHasExpiredDoesNotSurviveTheEnd) {
  delegate->settings().setSoftSensitiveExpiry(1);
  copy(u"482913"_s);
  copy(u"queda"_s);
  ASSERT_EQ(delegate->store().items().size(), 2);
  // Without the timer that would sweep it.
  QThread::msleep(1100);
  delegate->applicationWillTerminate();
  EXPECT_EQ(delegate->store().items().size(), 1);
  delegate.reset();
  const auto database = openHistory(directory, *cipher, *platform.defaults, clock);
  EXPECT_EQ(database->loadAll().clips.size(), 1);
}

TEST_F(AppDelegateTest, ThePreviewLeavesNothingBehindAtTheEnd) {
  copy(u"hola"_s);
  delegate->showPanel();
  QTest::keyClick(panel->findChild<QLineEdit*>(u"searchField"_s), Qt::Key_Space);
  ASSERT_TRUE(QTest::qWaitFor([this] { return preview->visible; }));
  const QDir folder(platform.temporaryFolder + u"/nimbrel-preview"_s);
  EXPECT_EQ(folder.entryList(QDir::Files).size(), 1);
  delegate->applicationWillTerminate();
  EXPECT_TRUE(folder.entryList(QDir::Files).isEmpty());
}

TEST_F(AppDelegateTest, TakesInTextsOfOtherDevices) {
  delegate->openUrls({u"nimbrel://add?text=hola&source=ipad"_s});
  ASSERT_EQ(delegate->store().items().size(), 1);
  EXPECT_EQ(delegate->store().items().at(0)->clip.sourceName, u"iPad"_s);
}

TEST_F(AppDelegateTest, TheLockGivesTheKeyboardBackToThePanel) {
  delegate->settings().setLockMode(LockMode::sensitiveOnly);
  copy(u"4111 1111 1111 1111"_s);
  delegate->showPanel();
  QMenu* const menu = openClipMenu();
  ASSERT_TRUE(menu);
  const auto actions = menu->actions();
  const auto unlock = std::find_if(actions.begin(), actions.end(), [](const QAction* action) {
    return action->text() == u"Desbloquear con Touch ID";
  });
  ASSERT_NE(unlock, actions.end());
  (*unlock)->trigger();
  EXPECT_EQ(authenticator->asked, QStringList{u"ver la credencial guardada en Nimbrel"_s});
  EXPECT_EQ(panelWindow->stepsBack, 1);
  authenticator->reply(AuthenticationReply::Outcome::proven);
  EXPECT_EQ(panelWindow->stepsForward, 1);
}

TEST_F(AppDelegateTest, SwitchingTheLockOffAsksForTheWholeHistory) {
  delegate->settings().setLockMode(LockMode::sensitiveOnly);
  delegate->openSettings();
  QCheckBox* const lock = lockSwitch();
  lock->click();
  EXPECT_EQ(authenticator->asked, QStringList{u"ver el historial del portapapeles"_s});
  authenticator->reply(AuthenticationReply::Outcome::refused);
  EXPECT_EQ(delegate->settings().values().lockMode, LockMode::sensitiveOnly);
}

TEST_F(AppDelegateTest, WaitingForThePromptToGoDoesNotSwitchTheLockOff) {
  delegate->settings().setLockMode(LockMode::sensitiveOnly);
  delegate->openSettings();
  lockSwitch()->click();
  authenticator->reply(AuthenticationReply::Outcome::refused, u"polkit se fue"_s);
  EXPECT_EQ(delegate->settings().values().lockMode, LockMode::sensitiveOnly);
}

TEST_F(AppDelegateTest, ASecondStartBringsThePanelForward) {
  delegate->showPanel();
  delegate->showPanel();
  EXPECT_EQ(panelWindow->stepsForward, 1);
}

TEST_F(AppDelegateTest, WhereNobodyCanBeAskedTheLockCanBeSwitchedOff) {
  authenticator->obstacle = u"no hay agente"_s;
  delegate->settings().setLockMode(LockMode::sensitiveOnly);
  delegate->openSettings();
  lockSwitch()->click();
  EXPECT_EQ(delegate->settings().values().lockMode, LockMode::disabled);
}

TEST_F(AppDelegateTest, ThePanelKnowsTheIconsOfTheApplicationsItShows) {
  applications->installed = {{u"org.kde.kate"_s, u"Kate"_s, u"kate"_s}};
  applications->icons.insert(u"kate"_s, QIcon(QPixmap(32, 32)));
  workspace->front = RunningApplication{u"org.kde.kate"_s, u"Kate"_s, 1};
  copy(u"a"_s);
  delegate->showPanel();
  EXPECT_TRUE(QTest::qWaitFor([this] { return applications->looked > 0; }));
}

TEST_F(AppDelegateTest, TheNextHotKeyWithAnEmptyQueueDoesNothing) {
  copy(u"a"_s);
  pressNext();
  EXPECT_TRUE(pasteboard->writes.isEmpty());
  EXPECT_EQ(keystrokes->pastes, 0);
}

TEST_F(AppDelegateTest, AClipThatCannotBeCopiedStaysInTheQueue) {
  copy(u"a"_s);
  delegate->store().addToQueue(idAt(0));
  pasteboard->failWrites = true;
  pressNext();
  EXPECT_EQ(delegate->store().queuedIDs().size(), 1);
  EXPECT_EQ(keystrokes->pastes, 0);
}

TEST_F(AppDelegateTest, WithoutTrustTheNextHotKeyCopiesAndAsksForIt) {
  trust->trusted = false;
  copy(u"a"_s);
  delegate->store().addToQueue(idAt(0));
  pressNext();
  EXPECT_EQ(pasteboard->writes.size(), 1);
  EXPECT_TRUE(delegate->store().queuedIDs().isEmpty());
  EXPECT_EQ(keystrokes->pastes, 0);
  EXPECT_EQ(trust->requests, 1);
}

TEST_F(AppDelegateTest, WhilePausedTheStatusItemStillCountsTheQueue) {
  copy(u"a"_s);
  delegate->store().addToQueue(idAt(0));
  delegate->store().setPaused(true);
  EXPECT_EQ(statusItem->state, (StatusItemState{u"pause.circle"_s, u"Nimbrel en pausa"_s, u"1"_s}));
}

TEST_F(AppDelegateTest, AnImageCopiedJustBeforeTheEndIsKept) {
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::png.toString()};
  snapshot.image = "png";
  pasteboard->copy(snapshot);
  delegate->store().tick();
  delegate.reset();
  start();
  ASSERT_EQ(delegate->store().items().size(), 1);
  EXPECT_TRUE(delegate->store().items().at(0)->clip.isImage());
}

TEST_F(AppDelegateTest, ARecognitionThatTheEndInterruptedGoesOnAtTheNextStart) {
  recognizer->endless = true;
  recognizer->lines.insert("png", {{u"texto"_s, QRectF()}});
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::png.toString()};
  snapshot.image = "png";
  pasteboard->copy(snapshot);
  delegate->store().tick();
  ASSERT_TRUE(QTest::qWaitFor([this] { return recognizer->calls == 1; }));
  delegate.reset();
  recognizer->endless = false;
  start();
  EXPECT_TRUE(QTest::qWaitFor([this] { return delegate->store().search(u"texto"_s).size() == 1; }));
}

TEST_F(AppDelegateTest, ARecognitionThatFailedIsNotTriedAgainAtTheNextStart) {
  recognizer->error = u"se rompió"_s;
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::png.toString()};
  snapshot.image = "png";
  pasteboard->copy(snapshot);
  delegate->store().tick();
  ASSERT_TRUE(QTest::qWaitFor([this] { return log.has(u"OCR: se rompió"_s); }));
  QCoreApplication::processEvents();
  delegate.reset();
  start();
  QTest::qWait(50);
  EXPECT_EQ(recognizer->calls, 1);
}

TEST_F(AppDelegateTest, TheSettingsWindowIsMadeOnceAndComesInThePlaceOfThePanel) {
  delegate->showPanel();
  EXPECT_EQ(delegate->settingsView(), nullptr);
  delegate->openSettings();
  SettingsView* const view = delegate->settingsView();
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(view->isVisible());
  EXPECT_EQ(view->windowTitle(), u"Ajustes de Nimbrel");
  EXPECT_EQ(view->size(), QSize(490, 390));
  EXPECT_EQ(view->minimumSize(), view->maximumSize());
  view->close();
  delegate->openSettings();
  EXPECT_EQ(delegate->settingsView(), view);
  EXPECT_TRUE(view->isVisible());
}

TEST_F(AppDelegateTest, TheSettingsCountInWords) {
  const Localization localization(u"es"_s);
  delegate->openSettings();
  QStringList capacities;
  const auto pickers = delegate->settingsView()->findChildren<QComboBox*>();
  const QComboBox* const picker = *std::find_if(pickers.begin(), pickers.end(), [](const QComboBox* box) {
    return box->accessibleName() == u"Capacidad del historial";
  });
  for (int i = 0; i < picker->count(); ++i)
    capacities.append(picker->itemText(i));
  EXPECT_EQ(capacities.join(u'|'), u"25 elementos|50 elementos|100 elementos|200 elementos|500 elementos");
  delegate->settings().setMaxUnpinned(1);
  EXPECT_EQ(picker->currentText(), u"1 elemento");
}

TEST_F(AppDelegateTest, ThePanelEndsARecording) {
  delegate->openSettings();
  auto* const recorder = delegate->settingsView()->findChild<HotKeyRecorder*>();
  recorder->findChild<QPushButton*>()->click();
  ASSERT_TRUE(recorder->isRecording());
  delegate->showPanel();
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
  EXPECT_EQ(hotKeys->registered.size(), 2);
}

TEST_F(AppDelegateTest, AMinimisedSettingsWindowComesBack) {
  delegate->openSettings();
  delegate->settingsView()->showMinimized();
  delegate->openSettings();
  EXPECT_FALSE(delegate->settingsView()->isMinimized());
  EXPECT_TRUE(delegate->settingsView()->isVisible());
}

TEST_F(AppDelegateTest, ARecordedHotKeyTakesThePlaceOfTheOldOneAndLasts) {
  record({.keyCode = 11, .modifiers = 256, .characters = u"b"_s});
  EXPECT_THAT(hotKeys->registered.values(),
              ::testing::UnorderedElementsAre(FakeHotKeyRegistrar::Combo{11, 256},
                                              FakeHotKeyRegistrar::Combo{45, 768}));
  const auto stored = defaults->stored;
  delegate.reset();
  defaults->values = stored;
  start();
  EXPECT_THAT(hotKeys->registered.values(), ::testing::Contains(FakeHotKeyRegistrar::Combo{11, 256}));
}

TEST_F(AppDelegateTest, ARefusedHotKeyLeavesTheOldOneWorking) {
  hotKeys->taken.append({11, 256});
  record({.keyCode = 11, .modifiers = 256, .characters = u"b"_s});
  EXPECT_EQ(delegate->settingsView()->findChild<HotKeyRecorder*>()->message(), u"Ya está en uso");
  EXPECT_THAT(hotKeys->registered.values(),
              ::testing::UnorderedElementsAre(FakeHotKeyRegistrar::Combo{9, 768},
                                              FakeHotKeyRegistrar::Combo{45, 768}));
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(AppDelegateTest, AnIgnoredApplicationIsObeyedAtOnce) {
  workspace->front = RunningApplication{u"org.example.App"_s, u"App"_s, 7};
  copy(u"antes"_s);
  ASSERT_EQ(delegate->store().items().size(), 1);
  delegate->settings().setIgnoredApps({{u"org.example.App"_s, u"App"_s}});
  copy(u"después"_s);
  EXPECT_EQ(delegate->store().items().size(), 1);
}

TEST_F(AppDelegateTest, ASmallerCapacityIsObeyedAtOnce) {
  for (int i = 0; i < 30; ++i)
    copy(QString::number(i));
  delegate->settings().setMaxUnpinned(25);
  EXPECT_EQ(delegate->store().items().size(), 25);
}

TEST_F(AppDelegateTest, CodesDisappearFromCaptureWhenTheyAreNotToBeKept) {
  copy(u"482913"_s);
  EXPECT_EQ(delegate->store().items().size(), 1);
  delegate->settings().setSoftSensitiveExpiry(0);
  copy(u"482914"_s);
  EXPECT_EQ(delegate->store().items().size(), 1);
}

TEST_F(AppDelegateTest, TheSwitchesReachCapture) {
  delegate->settings().setRichEnabled(false);
  EXPECT_FALSE(pasteboard->policy.wantsRichText);
  delegate->settings().setOcrEnabled(false);
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::png.toString()};
  snapshot.image = "png";
  recognizer->lines.insert("png", {{u"texto"_s, QRectF()}});
  pasteboard->copy(snapshot);
  delegate->store().tick();
  ASSERT_TRUE(QTest::qWaitFor([this] { return delegate->store().items().size() == 1; }));
  EXPECT_EQ(recognizer->calls, 0);
  delegate->settings().setOcrEnabled(true);
  EXPECT_TRUE(QTest::qWaitFor([this] { return delegate->store().search(u"texto"_s).size() == 1; }));
}

TEST_F(AppDelegateTest, AnOlderHistoryIsThereAtTheFirstLaunch) {
  delegate.reset();
  defaults->values.insert(u"clipboardItems"_s,
                          QByteArray(R"([{"id": "11111111-2222-3333-4444-555555555555", "text": "antiguo",
                                         "date": 700000000, "pinned": true}])"));
  start();
  ASSERT_EQ(delegate->store().items().size(), 1);
  EXPECT_EQ(delegate->store().items().at(0)->clip.text, u"antiguo");
  EXPECT_EQ(delegate->store().search(u"antig"_s).size(), 1);
}

}  // namespace
}  // namespace nimbrel
