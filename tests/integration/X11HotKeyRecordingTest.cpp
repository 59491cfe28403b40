#include <gmock/gmock.h>

#include <xcb/xtest.h>

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <QVBoxLayout>

#include "app/hotkeys/HotKey.h"
#include "app/hotkeys/HotKeyRecorder.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/linux/X11KeyReader.h"
#include "platform/linux/Xkb.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// A recorder in a real window, with keys pressed by another program.
class X11HotKeyRecordingTest : public ::testing::Test {
 protected:
  X11HotKeyRecordingTest() {
    auto* const column = new QVBoxLayout(&window);
    column->addWidget(recorder);
    window.show();
    window.activateWindow();
    button = window.findChild<QPushButton*>();
    capture = window.findChild<KeyCaptureView*>();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  ~X11HotKeyRecordingTest() override { layout({u"us"_s}); }

  static void xdotool(const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(u"xdotool"_s, arguments), 0);
  }
  static void key(const QString& chord) { xdotool({u"key"_s, chord}); }
  static void layout(const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(u"setxkbmap"_s, arguments), 0);
    // The toolkit must have heard of the new layout before keys come that are meant for it.
    QTest::qWait(100);
  }
  /// Presses a position of the keyboard together with Super.
  static void superKey(int keyCode) {
    xdotool({u"keydown"_s, u"133"_s, u"key"_s, QString::number(keyCode), u"keyup"_s, u"133"_s});
  }
  [[nodiscard]] bool finishes() {
    return QTest::qWaitFor([this] { return !recorder->isRecording(); });
  }
  [[nodiscard]] HotKeyCombo last() const { return applied.isEmpty() ? HotKeyCombo() : applied.last(); }

  X11Session session;
  X11HotKeyRegistrar registrar{session};
  HotKeyDispatcher dispatcher{registrar};
  X11KeyReader keys{session};
  int fired = 0;
  HotKey hotKey{dispatcher, [this] { ++fired; }};
  QList<HotKeyCombo> applied;
  QWidget window;
  HotKeyRecorder* recorder =
      new HotKeyRecorder(keys, dispatcher, u"Abrir"_s, [this](const HotKeyCombo& combo) {
        applied.append(combo);
        return hotKey.registerCombo(combo);
      });
  QPushButton* button = nullptr;
  KeyCaptureView* capture = nullptr;
};

TEST_F(X11HotKeyRecordingTest, RecordsWhatIsPressedAndItWorksAtOnce) {
  button->click();
  key(u"ctrl+shift+F5"_s);
  ASSERT_TRUE(finishes());
  EXPECT_EQ(last(), (HotKeyCombo{96, 4096 | 512, u"F5"_s}));
  EXPECT_EQ(fired, 0);
  key(u"ctrl+shift+F5"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return fired == 1; }));
}

TEST_F(X11HotKeyRecordingTest, LabelsTheKeyAsTheLayoutInUseDoes) {
  const struct {
    QStringList layout;
    int key;
    HotKeyCombo combo;
  } expected[] = {
      {{u"us"_s}, 38, {0, 256, u"A"_s}},        {{u"es"_s}, 47, {41, 256, u"Ñ"_s}},
      {{u"es"_s}, 48, {39, 256, u"´"_s}},       {{u"fr"_s}, 38, {0, 256, u"Q"_s}},
      {{u"fr"_s}, 10, {18, 256, u"&"_s}},       {{u"de"_s}, 29, {16, 256, u"Z"_s}},
      {{u"de"_s}, 47, {41, 256, u"Ö"_s}},       {{u"us"_s, u"-variant"_s, u"dvorak"_s}, 55, {9, 256, u"K"_s}},
      {{u"ru"_s}, 55, {9, 256, u"М"_s}},        {{u"us"_s}, 87, {83, 256, u"1"_s}},
      {{u"us"_s}, 65, {49, 256, u"Espacio"_s}}, {{u"us"_s}, 23, {48, 256, u"⇥"_s}},
      {{u"us"_s}, 111, {126, 256, u"↑"_s}},
  };
  for (const auto& [keyboard, keyCode, combo] : expected) {
    layout(keyboard);
    button->click();
    superKey(keyCode);
    ASSERT_TRUE(finishes()) << keyboard.first().toStdString() << keyCode;
    EXPECT_EQ(last(), combo) << keyboard.first().toStdString() << " " << last().keyLabel.toStdString();
  }
}

TEST_F(X11HotKeyRecordingTest, ShiftDoesNotChangeTheLabel) {
  button->click();
  key(u"shift+super+1"_s);
  ASSERT_TRUE(finishes());
  EXPECT_EQ(last(), (HotKeyCombo{18, 768, u"1"_s}));
}

TEST_F(X11HotKeyRecordingTest, LocksAreNoPartOfTheCombination) {
  key(u"Caps_Lock"_s);
  key(u"Num_Lock"_s);
  button->click();
  key(u"super+b"_s);
  EXPECT_TRUE(finishes());
  EXPECT_EQ(last(), (HotKeyCombo{11, 256, u"B"_s}));
  key(u"Caps_Lock"_s);
  key(u"Num_Lock"_s);
}

TEST_F(X11HotKeyRecordingTest, TheRegisteredCombinationIsRecordedAndDoesNotFire) {
  ASSERT_TRUE(hotKey.registerCombo(defaultHotKey()));
  button->click();
  key(u"shift+super+v"_s);
  ASSERT_TRUE(finishes());
  EXPECT_EQ(last(), defaultHotKey());
  QTest::qWait(100);
  EXPECT_EQ(fired, 0);
  key(u"shift+super+v"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return fired == 1; }));
}

TEST_F(X11HotKeyRecordingTest, ACombinationOfAnotherProgramIsReported) {
  X11Session other;
  X11HotKeyRegistrar theirs(other);
  int theirPresses = 0;
  theirs.setPressHandler([&](quint32) { ++theirPresses; });
  ASSERT_TRUE(theirs.registerHotKey(1, 11, 256));
  button->click();
  key(u"super+b"_s);
  ASSERT_TRUE(finishes());
  EXPECT_EQ(recorder->message(), u"Ya está en uso");
  EXPECT_EQ(theirPresses, 0);
}

TEST_F(X11HotKeyRecordingTest, ModifiersAloneLeaveItWaitingAndShiftIsNotEnough) {
  button->click();
  for (const auto& name : {u"Shift_L"_s, u"Super_L"_s, u"Control_R"_s, u"Alt_L"_s, u"Caps_Lock"_s,
                           u"Num_Lock"_s, u"ISO_Level3_Shift"_s, u"Caps_Lock"_s, u"Num_Lock"_s})
    key(name);
  QTest::qWait(100);
  EXPECT_EQ(recorder->message(), QString());
  key(u"shift+v"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return recorder->message() == u"Usa ⌘, ⌥ o ⌃"; }));
  EXPECT_TRUE(recorder->isRecording());
  key(u"Escape"_s);
  EXPECT_TRUE(finishes());
  EXPECT_TRUE(applied.isEmpty());
}

TEST_F(X11HotKeyRecordingTest, AnotherWindowThatComesToTheFrontEndsIt) {
  button->click();
  QProcess client;
  client.start(u"xterm"_s, {u"-geometry"_s, u"20x5+700+600"_s});
  EXPECT_TRUE(QTest::qWaitFor([this] { return !recorder->isRecording(); }, 10000));
  EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
  client.kill();
  client.waitForFinished();
}

TEST_F(X11HotKeyRecordingTest, LabelsTheKeyAsTheSecondOfTwoLayoutsDoes) {
  layout({u"us,fr"_s});
  xcb_xkb_latch_lock_state(session.connection(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, true, 1, 0, false, 0);
  session.flush();
  button->click();
  // Not through a tool that goes back to the first layout for a key that it is given by position.
  for (const auto& [type, key] : {std::pair(XCB_KEY_PRESS, 133), std::pair(XCB_KEY_PRESS, 38),
                                  std::pair(XCB_KEY_RELEASE, 38), std::pair(XCB_KEY_RELEASE, 133)})
    xcb_test_fake_input(session.connection(), static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(key),
                        0, session.root(), 0, 0, 0);
  session.flush();
  ASSERT_TRUE(finishes());
  EXPECT_EQ(last(), (HotKeyCombo{0, 256, u"Q"_s}));
}

TEST_F(X11HotKeyRecordingTest, AltGrMakesNoCombination) {
  layout({u"es"_s});
  button->click();
  xdotool({u"keydown"_s, u"ctrl"_s, u"keydown"_s, u"108"_s, u"key"_s, u"26"_s, u"keyup"_s, u"108"_s,
           u"keyup"_s, u"ctrl"_s});
  EXPECT_TRUE(QTest::qWaitFor([this] { return recorder->message() == u"Usa ⌘, ⌥ o ⌃"; }));
  EXPECT_TRUE(applied.isEmpty());
}

TEST_F(X11HotKeyRecordingTest, EscapeIsTheWayOutWhereverItIs) {
  layout({u"us"_s, u"-option"_s, u"caps:swapescape"_s});
  button->click();
  xdotool({u"key"_s, u"66"_s});
  EXPECT_TRUE(finishes());
  EXPECT_EQ(recorder->message(), QString());
  layout({u"-option"_s});
}

TEST(CharacterOf, IsWhatAKeyPrints) {
  EXPECT_EQ(characterOf('a'), u"a");
  EXPECT_EQ(characterOf(0xfe51), u"´");
  EXPECT_EQ(characterOf(0xfe57), u"¨");
  EXPECT_EQ(characterOf(0x06cd), u"м");
  // BackSpace, Return, Delete, Home, F1.
  for (const quint32 symbol : {0xff08U, 0xff0dU, 0xffffU, 0xff50U, 0xffbeU, 0U})
    EXPECT_EQ(characterOf(symbol), QString()) << symbol;
}

}  // namespace
}  // namespace nimbrel
