#include "app/hotkeys/HotKey.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class HotKeyTest : public ::testing::Test {
 protected:
  void press(quint32 id) {
    registrar.handler(id);
    QCoreApplication::processEvents();
  }

  testing::FakeHotKeyRegistrar registrar;
  HotKeyDispatcher dispatcher{registrar};
  int pressed = 0;
};

TEST_F(HotKeyTest, RunsItsActionWhenPressed) {
  HotKey hotKey(dispatcher, [this] { ++pressed; });
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()));
  EXPECT_EQ(registrar.registered.value(hotKey.id()), (testing::FakeHotKeyRegistrar::Combo{9, 768}));
  press(hotKey.id());
  EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyTest, RunsItsActionAfterThePressHasBeenTakenIn) {
  HotKey hotKey(dispatcher, [this] { ++pressed; });
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()));
  registrar.handler(hotKey.id());
  EXPECT_EQ(pressed, 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyTest, NumbersItselfFromOneUpwards) {
  EXPECT_EQ(HotKey(dispatcher, {}).id(), 1U);
  EXPECT_EQ(HotKey(dispatcher, {}).id(), 2U);
}

TEST_F(HotKeyTest, SaysWhenACombinationIsTakenAndHoldsNothingThen) {
  registrar.taken.append({9, 768});
  HotKey hotKey(dispatcher, [this] { ++pressed; });
  EXPECT_FALSE(hotKey.registerCombo(defaultHotKey()));
  EXPECT_TRUE(registrar.registered.isEmpty());
  press(hotKey.id());
  EXPECT_EQ(pressed, 0);
}

TEST_F(HotKeyTest, HoldsOnlyTheSecondOfTwoCombinations) {
  HotKey hotKey(dispatcher, [] {});
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()));
  ASSERT_TRUE(hotKey.registerCombo(defaultNextHotKey()));
  EXPECT_EQ(registrar.registered.size(), 1);
  EXPECT_EQ(registrar.registered.value(hotKey.id()).keyCode, 45U);
}

TEST_F(HotKeyTest, DoesNotGetItsOldCombinationBackWhenTheNewOneIsTaken) {
  registrar.taken.append({45, 768});
  HotKey hotKey(dispatcher, [this] { ++pressed; });
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()));
  EXPECT_FALSE(hotKey.registerCombo(defaultNextHotKey()));
  EXPECT_TRUE(registrar.registered.isEmpty());
  press(hotKey.id());
  EXPECT_EQ(pressed, 0);
}

TEST_F(HotKeyTest, RunsNothingOnceItIsDestroyed) {
  auto hotKey = std::make_unique<HotKey>(dispatcher, [this] { ++pressed; });
  ASSERT_TRUE(hotKey->registerCombo(defaultHotKey()));
  const quint32 id = hotKey->id();
  registrar.handler(id);
  hotKey.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(pressed, 0);
  EXPECT_TRUE(registrar.registered.isEmpty());
}

TEST_F(HotKeyTest, RestsWhileTheDispatcherIsSuspended) {
  HotKey hotKey(dispatcher, [this] { ++pressed; });
  HotKey next(dispatcher, [] {});
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()) && next.registerCombo(defaultNextHotKey()));
  registrar.handler(hotKey.id());
  dispatcher.suspend();
  EXPECT_TRUE(registrar.registered.isEmpty());
  QCoreApplication::processEvents();
  EXPECT_EQ(pressed, 0);
  dispatcher.resume();
  EXPECT_EQ(registrar.registered.size(), 2);
  press(hotKey.id());
  EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyTest, OneThatIsTakenDuringASuspensionIsLoggedAndDoesNothingAnyMore) {
  testing::LogRecorder log;
  HotKey hotKey(dispatcher, [this] { ++pressed; });
  HotKey next(dispatcher, [] {});
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()) && next.registerCombo(defaultNextHotKey()));
  dispatcher.suspend();
  registrar.taken.append({9, 768});
  dispatcher.resume();
  EXPECT_EQ(log.lines(), QStringList{u"No se pudo registrar ⇧⌘V: puede que otra app lo use."_s});
  EXPECT_EQ(registrar.registered.size(), 1);
  press(hotKey.id());
  EXPECT_EQ(pressed, 0);
  registrar.taken.clear();
  dispatcher.suspend();
  dispatcher.resume();
  press(hotKey.id());
  EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyTest, RestsUntilTheLastOfSeveralSuspensionsEnds) {
  HotKey hotKey(dispatcher, [] {});
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()));
  dispatcher.suspend();
  dispatcher.suspend();
  dispatcher.resume();
  EXPECT_TRUE(registrar.registered.isEmpty());
  dispatcher.resume();
  EXPECT_EQ(registrar.registered.size(), 1);
}

TEST_F(HotKeyTest, ACombinationOfTheOtherHotKeyIsTakenAlsoDuringASuspension) {
  HotKey hotKey(dispatcher, [] {});
  HotKey next(dispatcher, [] {});
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()) && next.registerCombo(defaultNextHotKey()));
  dispatcher.suspend();
  EXPECT_FALSE(next.registerCombo(defaultHotKey()));
  EXPECT_TRUE(registrar.registered.isEmpty());
  dispatcher.resume();
  EXPECT_EQ(registrar.registered.size(), 1);
}

std::optional<HotKeyCombo> recorded(quint32 keyCode, quint32 modifiers, const QString& characters) {
  return recordedCombo({.keyCode = keyCode, .modifiers = modifiers, .characters = characters});
}

TEST(HotKeyCombo, IsRecordedWithTheCharacterInUpperCase) {
  EXPECT_EQ(recorded(0, 256, u"a"_s), (HotKeyCombo{0, 256, u"A"_s}));
  EXPECT_EQ(recorded(41, 4096, u"ñ"_s), (HotKeyCombo{41, 4096, u"Ñ"_s}));
  EXPECT_EQ(recorded(18, 768, u"1"_s), (HotKeyCombo{18, 768, u"1"_s}));
}

TEST(HotKeyCombo, IsNotRecordedWithoutCommandOptionOrControl) {
  EXPECT_EQ(recorded(9, 0, u"v"_s), std::nullopt);
  EXPECT_EQ(recorded(9, 512, u"v"_s), std::nullopt);
  EXPECT_EQ(recorded(96, 512, QString()), std::nullopt);
  for (const quint32 modifier : {256U, 2048U, 4096U})
    EXPECT_NE(recorded(9, modifier, u"v"_s), std::nullopt);
}

TEST(HotKeyCombo, IsRecordedWithTheNamesOfSpecialKeys) {
  EXPECT_EQ(recorded(49, 2048, u" "_s), (HotKeyCombo{49, 2048, u"Espacio"_s}));
  EXPECT_EQ(recorded(49, 2048, u" "_s)->displayString(), u"⌥Espacio");
  EXPECT_EQ(recorded(96, 2048 | 4096, QString())->displayString(), u"⌃⌥F5");
  EXPECT_EQ(recorded(48, 4096, u"\t"_s)->keyLabel, u"⇥");
  const QList<std::pair<quint32, QString>> names{
      {123, u"←"_s},  {124, u"→"_s},  {126, u"↑"_s},   {125, u"↓"_s},   {122, u"F1"_s},
      {120, u"F2"_s}, {99, u"F3"_s},  {118, u"F4"_s},  {97, u"F6"_s},   {98, u"F7"_s},
      {100, u"F8"_s}, {101, u"F9"_s}, {109, u"F10"_s}, {103, u"F11"_s}, {111, u"F12"_s}};
  for (const auto& [keyCode, name] : names)
    EXPECT_EQ(recorded(keyCode, 256, QString())->keyLabel, name);
}

TEST(HotKeyCombo, IsNotRecordedForAKeyThatNoOneCharacterTells) {
  for (const QString& characters :
       {QString(), u" "_s, u"\r"_s, u"\x1b"_s, u"ab"_s, u"\uf704"_s, u"ß"_s, u"😀"_s})
    EXPECT_EQ(recorded(7, 256, characters), std::nullopt) << characters.toStdString();
  EXPECT_EQ(recorded(7, 256, u"e\u0301"_s)->keyLabel, u"E\u0301");
  EXPECT_EQ(recordedCombo({.keyCode = std::nullopt, .modifiers = 256, .characters = u"x"_s}), std::nullopt);
}

TEST(HotKeyCombo, ShowsItsModifiersInTheFixedOrder) {
  EXPECT_EQ(defaultHotKey().displayString(), u"⇧⌘V"_s);
  EXPECT_EQ((HotKeyCombo{96, hotKeyModifier::option | hotKeyModifier::control, u"F5"_s}.displayString()),
            u"⌃⌥F5"_s);
  EXPECT_EQ((HotKeyCombo{9, 256 | 512 | 2048 | 4096, u"V"_s}.displayString()), u"⌃⌥⇧⌘V"_s);
}

TEST(HotKeyCombo, IsSaidInWords) {
  EXPECT_EQ(defaultHotKey().spokenString(), u"Mayúsculas Comando V");
  EXPECT_EQ((HotKeyCombo{49, 2048 | 4096, u"x"_s}.spokenString()), u"Control Opción Espacio");
}

TEST(HotKeyCombo, NamesTheSpaceBar) {
  EXPECT_EQ((HotKeyCombo{49, hotKeyModifier::option, u"da igual"_s}.displayString()), u"⌥Espacio"_s);
}

TEST(HotKeyCombo, HasTwoDefaults) {
  EXPECT_EQ(defaultHotKey(), (HotKeyCombo{9, 768, u"V"_s}));
  EXPECT_EQ(defaultNextHotKey(), (HotKeyCombo{45, 768, u"N"_s}));
}

}  // namespace
}  // namespace nimbrel
