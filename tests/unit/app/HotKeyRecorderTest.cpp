#include "app/hotkeys/HotKeyRecorder.h"

#include <gmock/gmock.h>

#include <QKeyEvent>
#include <QTest>
#include <QVBoxLayout>

#include "app/hotkeys/HotKey.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class HotKeyRecorderTest : public ::testing::Test {
 protected:
  HotKeyRecorderTest() {
    auto* const column = new QVBoxLayout(&window);
    column->addWidget(recorder);
    column->addWidget(other);
    recorder->setCombo(defaultHotKey());
    EXPECT_TRUE(hotKey.registerCombo(defaultHotKey()));
    window.show();
    QApplication::setActiveWindow(&window);
    button = window.findChild<QPushButton*>(u"hotKeyButton"_s);
    capture = window.findChild<KeyCaptureView*>();
  }

  /// Presses a key that is read as this one.
  void press(quint32 keyCode, quint32 modifiers, const QString& characters = {}) {
    keys.next = PressedKey{.keyCode = keyCode, .modifiers = modifiers, .characters = characters};
    QTest::keyClick(capture, Qt::Key_X);
  }

  testing::FakeHotKeyRegistrar registrar;
  HotKeyDispatcher dispatcher{registrar};
  HotKey hotKey{dispatcher, [] {}};
  testing::FakeKeyReader keys;
  QList<HotKeyCombo> applied;
  bool accept = true;
  QWidget window;
  QPushButton* other = new QPushButton(u"otro"_s);
  HotKeyRecorder* recorder =
      new HotKeyRecorder(keys, dispatcher, u"Abrir Nimbrel"_s, [this](const auto& combo) {
        applied.append(combo);
        return accept;
      });
  QPushButton* button = nullptr;
  KeyCaptureView* capture = nullptr;
};

TEST_F(HotKeyRecorderTest, ShowsTheCombination) {
  EXPECT_EQ(button->text(), u"⇧⌘V");
  EXPECT_EQ(button->accessibleName(), u"Abrir Nimbrel: Mayúsculas Comando V");
  EXPECT_TRUE(button->isVisible());
  EXPECT_FALSE(capture->isVisible());
}

TEST_F(HotKeyRecorderTest, ShowsAnAmpersandAsItIs) {
  recorder->setCombo({18, 256, u"&"_s});
  EXPECT_EQ(button->text(), u"⌘&&");
}

TEST_F(HotKeyRecorderTest, GivesTheKeyboardBackWhenNobodyPressesAnything) {
  button->click();
  capture->setPatience(std::chrono::milliseconds(1));
  EXPECT_TRUE(QTest::qWaitFor([this] { return !recorder->isRecording(); }));
  EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
  EXPECT_EQ(registrar.registered.size(), 1);
}

TEST_F(HotKeyRecorderTest, ForgetsItsMessageWhenTheWindowIsClosed) {
  button->click();
  press(9, 512, u"v"_s);
  window.close();
  window.show();
  EXPECT_EQ(recorder->message(), QString());
}

TEST_F(HotKeyRecorderTest, AClickAsksForTheKeysAndTakesTheKeyboard) {
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_TRUE(recorder->isRecording());
  EXPECT_TRUE(capture->isVisible());
  EXPECT_EQ(capture->accessibleName(), u"Pulsa el atajo…");
  EXPECT_TRUE(capture->hasFocus());
  EXPECT_EQ(QWidget::keyboardGrabber(), capture);
}

TEST_F(HotKeyRecorderTest, TheHotKeysRestWhileItRecords) {
  button->click();
  EXPECT_TRUE(registrar.registered.isEmpty());
  press(53, 0);
  EXPECT_EQ(registrar.registered.size(), 1);
}

TEST_F(HotKeyRecorderTest, EscapeEndsWithoutAChange) {
  button->click();
  press(53, 0);
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_TRUE(applied.isEmpty());
  EXPECT_EQ(recorder->message(), QString());
  EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
  EXPECT_TRUE(button->hasFocus());
}

TEST_F(HotKeyRecorderTest, ShiftAloneIsNotEnoughAndItGoesOn) {
  button->click();
  press(9, 512, u"v"_s);
  EXPECT_TRUE(recorder->isRecording());
  EXPECT_EQ(recorder->message(), u"Usa ⌘, ⌥ o ⌃");
  press(53, 0);
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_EQ(recorder->message(), u"Usa ⌘, ⌥ o ⌃");
  EXPECT_TRUE(applied.isEmpty());
}

TEST_F(HotKeyRecorderTest, EscapeWithModifiersEndsToo) {
  button->click();
  press(53, 256);
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_TRUE(applied.isEmpty());
}

TEST_F(HotKeyRecorderTest, AValidCombinationIsAppliedAndClearsTheMessage) {
  button->click();
  press(9, 0, u"v"_s);
  press(0, 256, u"a"_s);
  EXPECT_EQ(applied, (QList<HotKeyCombo>{{0, 256, u"A"_s}}));
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_EQ(recorder->message(), QString());
}

TEST_F(HotKeyRecorderTest, ATakenCombinationIsReported) {
  accept = false;
  button->click();
  press(0, 256, u"a"_s);
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_EQ(recorder->message(), u"Ya está en uso");
  button->click();
  press(53, 0);
  EXPECT_EQ(recorder->message(), u"Ya está en uso");
}

TEST_F(HotKeyRecorderTest, IsAppliedWhenTheHotKeysWorkAgain) {
  qsizetype registered = 0;
  HotKeyRecorder second(keys, dispatcher, u"b"_s, [&](const auto&) {
    registered = registrar.registered.size();
    return true;
  });
  second.show();
  second.findChild<QPushButton*>()->click();
  keys.next = PressedKey{.keyCode = 0, .modifiers = 256, .characters = u"a"_s};
  QTest::keyClick(second.findChild<KeyCaptureView*>(), Qt::Key_X);
  EXPECT_EQ(registered, 1);
}

TEST_F(HotKeyRecorderTest, ModifiersAloneAndRepetitionsAreNoPresses) {
  button->click();
  keys.next.reset();
  QTest::keyClick(capture, Qt::Key_Meta);
  EXPECT_EQ(recorder->message(), QString());
  keys.next = PressedKey{.keyCode = 0, .modifiers = 256, .characters = u"a"_s};
  QKeyEvent repeated(QEvent::KeyPress, Qt::Key_A, Qt::MetaModifier, u"a"_s, true);
  QApplication::sendEvent(capture, &repeated);
  EXPECT_TRUE(recorder->isRecording());
  EXPECT_TRUE(applied.isEmpty());
}

TEST_F(HotKeyRecorderTest, TheTabKeyIsRecordedLikeAnyOther) {
  button->click();
  keys.next = PressedKey{.keyCode = 48, .modifiers = 4096, .characters = u"\t"_s};
  QTest::keyClick(capture, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(applied, (QList<HotKeyCombo>{{48, 4096, u"⇥"_s}}));
}

TEST_F(HotKeyRecorderTest, AClickElsewhereEndsIt) {
  button->click();
  QTest::mouseClick(&window, Qt::LeftButton, {}, {1, 1});
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_EQ(registrar.registered.size(), 1);
}

TEST_F(HotKeyRecorderTest, MovingTheKeyboardElsewhereEndsIt) {
  button->click();
  other->setFocus();
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
  EXPECT_TRUE(other->hasFocus());
}

TEST_F(HotKeyRecorderTest, ClosingTheWindowEndsIt) {
  button->click();
  window.close();
  EXPECT_FALSE(recorder->isRecording());
  EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
  EXPECT_EQ(registrar.registered.size(), 1);
}

}  // namespace
}  // namespace nimbrel
