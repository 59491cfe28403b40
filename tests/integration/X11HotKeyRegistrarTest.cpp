#include "platform/linux/X11HotKeyRegistrar.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTest>

#include "platform/linux/Xkb.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

constexpr quint32 kShiftCommand = 768;

/// Real key grabs on a real X server, with keys pressed by another program.
class X11HotKeyRegistrarTest : public ::testing::Test {
 protected:
  X11HotKeyRegistrarTest() {
    registrar.setPressHandler([this](quint32 id) { pressed.append(id); });
  }
  static void xdotool(const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(u"xdotool"_s, arguments), 0);
  }
  static void key(const QString& chord) { xdotool({u"key"_s, chord}); }
  static void layout(const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(u"setxkbmap"_s, arguments), 0);
  }
  /// Switches to a layout of several.
  void lockGroup(std::uint8_t group) {
    xcb_xkb_latch_lock_state(session.connection(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, true, group, 0, false, 0);
    session.flush();
  }

  X11Session session;
  X11HotKeyRegistrar registrar{session};
  QList<quint32> pressed;
};

TEST_F(X11HotKeyRegistrarTest, ReportsAPress) {
  ASSERT_TRUE(registrar.registerHotKey(7, 9, kShiftCommand));
  key(u"shift+super+v"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return pressed == QList<quint32>{7}; }));
}

TEST_F(X11HotKeyRegistrarTest, ReportsAPressWithCapsLockAndNumLockOn) {
  ASSERT_TRUE(registrar.registerHotKey(7, 9, kShiftCommand));
  key(u"Caps_Lock"_s);
  key(u"Num_Lock"_s);
  key(u"shift+super+v"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return pressed.size() == 1; }));
  key(u"Caps_Lock"_s);
  key(u"Num_Lock"_s);
}

TEST_F(X11HotKeyRegistrarTest, ReportsAHeldKeyOnce) {
  ASSERT_TRUE(registrar.registerHotKey(7, 9, kShiftCommand));
  xdotool({u"keydown"_s, u"shift"_s, u"keydown"_s, u"super"_s, u"keydown"_s, u"v"_s});
  ASSERT_TRUE(QTest::qWaitFor([this] { return !pressed.isEmpty(); }));
  // Longer than the server waits before it repeats a key.
  QTest::qWait(900);
  xdotool({u"keyup"_s, u"v"_s, u"keyup"_s, u"super"_s, u"keyup"_s, u"shift"_s});
  EXPECT_EQ(pressed.size(), 1);
}

TEST_F(X11HotKeyRegistrarTest, ReportsNothingWithOtherModifiers) {
  ASSERT_TRUE(registrar.registerHotKey(7, 9, kShiftCommand));
  ASSERT_TRUE(registrar.registerHotKey(8, 9, kShiftCommand | 4096));
  key(u"super+v"_s);
  key(u"shift+super+ctrl+v"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return pressed == QList<quint32>{8}; }));
}

TEST_F(X11HotKeyRegistrarTest, RefusesWhatAnotherProgramHolds) {
  X11Session other;
  X11HotKeyRegistrar theirs(other);
  ASSERT_TRUE(theirs.registerHotKey(1, 9, kShiftCommand));
  EXPECT_FALSE(registrar.registerHotKey(7, 9, kShiftCommand));
  theirs.unregisterHotKey(1);
  EXPECT_TRUE(registrar.registerHotKey(7, 9, kShiftCommand));
}

TEST_F(X11HotKeyRegistrarTest, ReportsNothingOnceItIsGivenBack) {
  ASSERT_TRUE(registrar.registerHotKey(7, 9, kShiftCommand));
  ASSERT_TRUE(registrar.registerHotKey(8, 45, kShiftCommand));
  registrar.unregisterHotKey(7);
  key(u"shift+super+v"_s);
  key(u"shift+super+n"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return pressed == QList<quint32>{8}; }));
}

TEST_F(X11HotKeyRegistrarTest, GoesByThePositionInEveryLayout) {
  for (const QString& layout : {u"es"_s, u"fr"_s, u"de"_s, u"dvorak"_s, u"us"_s}) {
    ASSERT_EQ(QProcess::execute(u"setxkbmap"_s, {layout == u"dvorak" ? u"us"_s : layout, u"-variant"_s,
                                                 layout == u"dvorak" ? u"dvorak"_s : QString()}),
              0);
    X11Session fresh;
    X11HotKeyRegistrar theirs(fresh);
    int presses = 0;
    theirs.setPressHandler([&](quint32) { ++presses; });
    ASSERT_TRUE(theirs.registerHotKey(1, 9, kShiftCommand)) << layout.toStdString();
    // 55 is where V is printed on an ANSI keyboard, whatever the layout makes of it.
    xdotool({u"keydown"_s, u"shift"_s, u"keydown"_s, u"super"_s, u"key"_s, u"55"_s, u"keyup"_s, u"super"_s,
             u"keyup"_s, u"shift"_s});
    EXPECT_TRUE(QTest::qWaitFor([&] { return presses == 1; })) << layout.toStdString();
  }
}

TEST_F(X11HotKeyRegistrarTest, GoesByThePositionInTheSecondOfTwoLayouts) {
  layout({u"us,fr"_s});
  ASSERT_TRUE(registrar.registerHotKey(1, 0, kShiftCommand));
  lockGroup(1);
  // 38 is where A is printed on an ANSI keyboard, and Q on a French one.
  xdotool({u"keydown"_s, u"50"_s, u"keydown"_s, u"133"_s, u"key"_s, u"38"_s, u"keyup"_s, u"133"_s, u"keyup"_s,
           u"50"_s});
  EXPECT_TRUE(QTest::qWaitFor([&] { return pressed == QList<quint32>{1}; }));
  lockGroup(0);
  layout({u"us"_s});
}

TEST_F(X11HotKeyRegistrarTest, FollowsAModifierThatMovesToAnotherBit) {
  ASSERT_TRUE(registrar.registerHotKey(1, 9, kShiftCommand));
  ASSERT_EQ(QProcess::execute(u"xmodmap"_s, {u"-e"_s, u"clear mod4"_s, u"-e"_s, u"clear mod3"_s, u"-e"_s,
                                             u"add mod3 = Super_L Super_R"_s}),
            0);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    key(u"shift+super+v"_s);
    QTest::qWait(50);
    return !pressed.isEmpty();
  }));
  layout({u"us"_s});
  pressed.clear();
  EXPECT_TRUE(QTest::qWaitFor([&] {
    key(u"shift+super+v"_s);
    QTest::qWait(50);
    return !pressed.isEmpty();
  }));
}

TEST_F(X11HotKeyRegistrarTest, AKeyThatIsDownWhenItIsRegisteredMustBeReleasedFirst) {
  xdotool({u"keydown"_s, u"shift"_s, u"keydown"_s, u"super"_s, u"keydown"_s, u"v"_s});
  ASSERT_TRUE(registrar.registerHotKey(7, 9, kShiftCommand));
  // Longer than the server waits before it repeats a key.
  QTest::qWait(900);
  EXPECT_TRUE(pressed.isEmpty());
  xdotool({u"keyup"_s, u"v"_s, u"keyup"_s, u"super"_s, u"keyup"_s, u"shift"_s});
  QTest::qWait(50);
  key(u"shift+super+v"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return pressed == QList<quint32>{7}; }));
}

TEST_F(X11HotKeyRegistrarTest, RefusesKeysThatDoNotExist) {
  EXPECT_FALSE(registrar.registerHotKey(7, 4000, kShiftCommand));
}

TEST(X11HotKeyRegistrarWithoutServer, RefusesEverything) {
  X11Session session(":9999");
  X11HotKeyRegistrar registrar(session);
  EXPECT_FALSE(registrar.registerHotKey(1, 9, kShiftCommand));
}

}  // namespace
}  // namespace nimbrel
