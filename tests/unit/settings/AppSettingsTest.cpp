#include "settings/model/AppSettings.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include "settings/model/SettingsCoding.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class AppSettingsTest : public ::testing::Test {
 protected:
  void store(const QString& key, const DefaultsValue& value) { defaults.values.insert(key, value); }
  void storeApps(const QList<IgnoredApp>& apps) { store(u"ignoredApps"_s, encoded(apps)); }
  [[nodiscard]] SettingsValues loaded() { return AppSettings(defaults).values(); }
  [[nodiscard]] QStringList loadedApps() {
    QStringList ids;
    for (const IgnoredApp& app : loaded().ignoredApps)
      ids.append(app.bundleID);
    return ids;
  }

  testing::FakeUserDefaults defaults;
};

TEST_F(AppSettingsTest, StartWithTheDefaults) {
  const SettingsValues values = loaded();
  EXPECT_EQ(values.maxUnpinned, 100);
  EXPECT_EQ(values.sensitiveExpiry, 300);
  EXPECT_EQ(values.softSensitiveExpiry, 900);
  EXPECT_TRUE(values.ocrEnabled);
  EXPECT_TRUE(values.richEnabled);
  EXPECT_EQ(values.lockMode, LockMode::disabled);
  EXPECT_EQ(values.hotKey, (HotKeyCombo{9, 768, u"V"_s}));
  EXPECT_EQ(values.nextHotKey, (HotKeyCombo{45, 768, u"N"_s}));
  EXPECT_EQ(values.ignoredApps.size(), 10);
  EXPECT_EQ(values.ignoredApps.first(), (IgnoredApp{u"com.apple.Passwords"_s, u"Contraseñas"_s}));
  EXPECT_EQ(values.ignoredApps.last(), (IgnoredApp{u"com.authy"_s, u"Authy"_s}));
  EXPECT_TRUE(defaults.intact);
}

TEST_F(AppSettingsTest, ACapacityBelowOneIsTheDefaultOne) {
  for (const qint64 capacity : {0, -5}) {
    store(u"maxUnpinned"_s, capacity);
    EXPECT_EQ(loaded().maxUnpinned, 100);
  }
  store(u"maxUnpinned"_s, qint64{1});
  EXPECT_EQ(loaded().maxUnpinned, 1);
  store(u"maxUnpinned"_s, u"50"_s);
  EXPECT_EQ(loaded().maxUnpinned, 100);
}

TEST_F(AppSettingsTest, AnExpiryOfZeroIsHonoured) {
  store(u"sensitiveExpiry"_s, qint64{0});
  store(u"softSensitiveExpiry"_s, qint64{-1});
  EXPECT_EQ(loaded().sensitiveExpiry, 0);
  EXPECT_EQ(loaded().softSensitiveExpiry, -1);
}

TEST_F(AppSettingsTest, AnExpiryOfAnotherTypeIsTheDefaultOne) {
  store(u"sensitiveExpiry"_s, u"0"_s);
  store(u"softSensitiveExpiry"_s, true);
  EXPECT_EQ(loaded().sensitiveExpiry, 300);
  EXPECT_EQ(loaded().softSensitiveExpiry, 900);
  EXPECT_FALSE(defaults.intact);
}

TEST_F(AppSettingsTest, ASwitchOfAnotherTypeIsOn) {
  store(u"ocrEnabled"_s, qint64{0});
  store(u"richEnabled"_s, ForeignDefault());
  EXPECT_TRUE(loaded().ocrEnabled);
  EXPECT_TRUE(loaded().richEnabled);
  store(u"ocrEnabled"_s, false);
  store(u"richEnabled"_s, false);
  EXPECT_FALSE(loaded().ocrEnabled);
  EXPECT_FALSE(loaded().richEnabled);
}

TEST_F(AppSettingsTest, TheRetiredLockOfTheWholePanelLocksSecretsAndIsStoredSo) {
  store(u"lockMode"_s, u"entirePanel"_s);
  AppSettings settings(defaults);
  EXPECT_EQ(settings.values().lockMode, LockMode::sensitiveOnly);
  settings.setMaxUnpinned(50);
  EXPECT_EQ(defaults.stored.value(u"lockMode"_s), DefaultsValue(u"sensitiveOnly"_s));
  EXPECT_EQ(defaults.stored.value(u"lockEnabled"_s), DefaultsValue(true));
}

TEST_F(AppSettingsTest, TheLockModeWinsOverTheOlderSwitch) {
  store(u"lockMode"_s, u"disabled"_s);
  store(u"lockEnabled"_s, true);
  EXPECT_EQ(loaded().lockMode, LockMode::disabled);
  store(u"lockMode"_s, u"sensitiveOnly"_s);
  store(u"lockEnabled"_s, false);
  EXPECT_EQ(loaded().lockMode, LockMode::sensitiveOnly);
}

TEST_F(AppSettingsTest, WithoutAKnownLockModeTheOlderSwitchDecides) {
  store(u"lockEnabled"_s, true);
  EXPECT_EQ(loaded().lockMode, LockMode::sensitiveOnly);
  store(u"lockMode"_s, u"fuerte"_s);
  EXPECT_EQ(loaded().lockMode, LockMode::sensitiveOnly);
  store(u"lockMode"_s, qint64{1});
  EXPECT_EQ(loaded().lockMode, LockMode::sensitiveOnly);
  store(u"lockEnabled"_s, false);
  EXPECT_EQ(loaded().lockMode, LockMode::disabled);
  store(u"lockEnabled"_s, qint64{1});
  EXPECT_EQ(loaded().lockMode, LockMode::disabled);
}

TEST_F(AppSettingsTest, CorruptHotKeysAreTheDefaultOnes) {
  store(u"hotKey"_s, QByteArray("{"));
  store(u"nextHotKey"_s, u"⌘N"_s);
  EXPECT_EQ(loaded().hotKey, defaultHotKey());
  EXPECT_EQ(loaded().nextHotKey, defaultNextHotKey());
  store(u"hotKey"_s, encoded(HotKeyCombo{96, 4096, u"F5"_s}));
  EXPECT_EQ(loaded().hotKey, (HotKeyCombo{96, 4096, u"F5"_s}));
}

TEST_F(AppSettingsTest, AnOlderListOfIgnoredAppsGainsTheMissingDefaults) {
  for (const qint64 generation : {0, 1}) {
    defaults.values.clear();
    if (generation > 0) store(u"ignoredAppsDefaultsVersion"_s, generation);
    storeApps({{u"com.authy"_s, u"Mi Authy"_s}, {u"org.example.Mine"_s, u"Mía"_s}});
    const auto apps = loaded().ignoredApps;
    EXPECT_THAT(loadedApps(), ElementsAre(u"com.authy"_s, u"org.example.Mine"_s, u"com.apple.Passwords"_s,
                                          u"com.apple.keychainaccess"_s, u"com.1password.1password"_s,
                                          u"com.agilebits.onepassword-osx"_s, u"com.bitwarden.desktop"_s,
                                          u"org.keepassxc.keepassxc"_s, u"com.dashlane.Dashlane"_s,
                                          u"com.enpass.Enpass"_s, u"com.lastpass.LastPass"_s));
    EXPECT_EQ(apps.first().name, u"Mi Authy");
    EXPECT_EQ(defaults.stored.value(u"ignoredAppsDefaultsVersion"_s), DefaultsValue(qint64{2}));
    EXPECT_EQ(defaults.stored.value(u"ignoredApps"_s), DefaultsValue(encoded(apps)));
  }
}

TEST_F(AppSettingsTest, ADefaultThatTheUserRemovedStaysAway) {
  for (const qint64 generation : {2, 3}) {
    QList<IgnoredApp> apps = defaultIgnoredApps();
    apps.removeFirst();
    storeApps(apps);
    store(u"ignoredAppsDefaultsVersion"_s, generation);
    EXPECT_EQ(loaded().ignoredApps, apps);
  }
  EXPECT_TRUE(defaults.written.isEmpty());
}

TEST_F(AppSettingsTest, AnEmptyListOfIgnoredAppsStaysEmpty) {
  storeApps({});
  store(u"ignoredAppsDefaultsVersion"_s, qint64{2});
  EXPECT_TRUE(loaded().ignoredApps.isEmpty());
}

TEST_F(AppSettingsTest, WithoutAListOnlyItsGenerationIsStoredAtOnce) {
  static_cast<void>(loaded());
  EXPECT_EQ(defaults.stored.value(u"ignoredAppsDefaultsVersion"_s), DefaultsValue(qint64{2}));
  EXPECT_EQ(defaults.stored.size(), 1);
}

TEST_F(AppSettingsTest, AnUnreadableListIsTheDefaultOneAndNothingIsStored) {
  store(u"ignoredApps"_s, QByteArray(R"([{"bundleID": "a"}])"));
  EXPECT_EQ(loaded().ignoredApps, defaultIgnoredApps());
  EXPECT_FALSE(defaults.intact);
  EXPECT_TRUE(defaults.stored.isEmpty());
}

TEST_F(AppSettingsTest, AfterAnUnreadableListARemovalLasts) {
  store(u"ignoredApps"_s, qint64{5});
  AppSettings settings(defaults);
  QList<IgnoredApp> apps = settings.values().ignoredApps;
  apps.removeFirst();
  settings.setIgnoredApps(apps);
  defaults.values = defaults.stored;
  EXPECT_EQ(loaded().ignoredApps, apps);
}

TEST_F(AppSettingsTest, EveryAssignmentStoresTheCompleteSetInOrder) {
  AppSettings settings(defaults);
  defaults.written.clear();
  settings.setRichEnabled(false);
  EXPECT_THAT(defaults.written,
              ElementsAre(u"maxUnpinned"_s, u"sensitiveExpiry"_s, u"softSensitiveExpiry"_s, u"ocrEnabled"_s,
                          u"richEnabled"_s, u"lockMode"_s, u"lockEnabled"_s, u"hotKey"_s, u"nextHotKey"_s,
                          u"ignoredApps"_s));
  EXPECT_EQ(defaults.stored.value(u"richEnabled"_s), DefaultsValue(false));
}

TEST_F(AppSettingsTest, WhatIsAssignedIsThereAfterARestart) {
  SettingsValues chosen;
  {
    AppSettings settings(defaults);
    settings.setMaxUnpinned(25);
    settings.setSensitiveExpiry(-1);
    settings.setSoftSensitiveExpiry(0);
    settings.setIgnoredApps({{u"a"_s, u"Á"_s}});
    settings.setOcrEnabled(false);
    settings.setRichEnabled(false);
    settings.setLockMode(LockMode::sensitiveOnly);
    settings.setHotKey({0, 256, u"A"_s});
    settings.setNextHotKey({49, 2048, u"Espacio"_s});
    chosen = settings.values();
  }
  EXPECT_NE(chosen, SettingsValues());
  defaults.values = defaults.stored;
  EXPECT_EQ(loaded(), chosen);
}

TEST_F(AppSettingsTest, AnnounceAChangeOnceAndNothingElse) {
  AppSettings settings(defaults);
  const QSignalSpy capacity(&settings, &AppSettings::maxUnpinnedChanged);
  const QSignalSpy lock(&settings, &AppSettings::lockModeChanged);
  settings.setMaxUnpinned(25);
  settings.setMaxUnpinned(25);
  EXPECT_EQ(capacity.size(), 1);
  EXPECT_EQ(lock.size(), 0);
}

TEST_F(AppSettingsTest, ARefusedHotKeyLeavesTheChosenOne) {
  AppSettings settings(defaults);
  QList<HotKeyCombo> applied;
  bool accept = false;
  settings.setHotKeyApplier([&](const HotKeyCombo& combo) {
    applied.append(combo);
    return accept;
  });
  const HotKeyCombo combo{0, 256, u"A"_s};
  EXPECT_FALSE(settings.applyHotKey(combo));
  EXPECT_EQ(settings.values().hotKey, defaultHotKey());
  accept = true;
  EXPECT_TRUE(settings.applyHotKey(combo));
  EXPECT_EQ(settings.values().hotKey, combo);
  EXPECT_THAT(applied, ElementsAre(combo, combo));
}

TEST(SettingsCoding, RefusesCombinationsThatNobodyCanRecord) {
  EXPECT_EQ(decodedHotKeyCombo(R"({"keyCode": 9, "modifiers": 768, "keyLabel": "V", "more": 1})"),
            defaultHotKey());
  for (const char* json :
       {R"({"keyCode": 9, "modifiers": 768})", R"({"keyCode": "9", "modifiers": 768, "keyLabel": "V"})",
        R"({"keyCode": -1, "modifiers": 768, "keyLabel": "V"})",
        R"({"keyCode": 4294967296, "modifiers": 768, "keyLabel": "V"})",
        R"({"keyCode": 9.5, "modifiers": 768, "keyLabel": "V"})",
        R"({"keyCode": 9, "modifiers": 512, "keyLabel": "V"})",
        R"({"keyCode": 9, "modifiers": 0, "keyLabel": "V"})",
        R"({"keyCode": 9, "modifiers": 66304, "keyLabel": "V"})", "[]", "", "null"})
    EXPECT_EQ(decodedHotKeyCombo(json), std::nullopt) << json;
}

TEST(SettingsCoding, RefusesAListInWhichOneEntryIsWrong) {
  EXPECT_EQ(decodedIgnoredApps("[]"), QList<IgnoredApp>());
  EXPECT_EQ(decodedIgnoredApps(R"([{"bundleID": "a", "name": "b", "more": 1}])"),
            (QList<IgnoredApp>{{u"a"_s, u"b"_s}}));
  for (const char* json : {"{}", "", R"([{"bundleID": "a"}])", R"([{"bundleID": 1, "name": "b"}])",
                           R"(["a"])", R"([{"bundleID": "a", "name": "b"}, null])"})
    EXPECT_EQ(decodedIgnoredApps(json), std::nullopt) << json;
}

TEST(SettingsCoding, StoresObjectsWithExactlyTheirKeys) {
  EXPECT_EQ(encoded(defaultHotKey()), R"({"keyCode":9,"keyLabel":"V","modifiers":768})");
  EXPECT_EQ(encoded(QList<IgnoredApp>{{u"a"_s, u"é"_s}}), R"([{"bundleID":"a","name":"é"}])");
}

}  // namespace
}  // namespace nimbrel
