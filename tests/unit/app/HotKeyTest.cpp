#include "app/hotkeys/HotKey.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include "support/Fakes.h"

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

TEST(HotKeyCombo, ShowsItsModifiersInTheFixedOrder) {
  EXPECT_EQ(defaultHotKey().displayString(), u"⇧⌘V"_s);
  EXPECT_EQ((HotKeyCombo{96, hotKeyModifier::option | hotKeyModifier::control, u"F5"_s}.displayString()),
            u"⌃⌥F5"_s);
  EXPECT_EQ((HotKeyCombo{9, 256 | 512 | 2048 | 4096, u"V"_s}.displayString()), u"⌃⌥⇧⌘V"_s);
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
