#include "panel/NoticeBar.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class NoticeBarTest : public ::testing::Test {
 protected:
  NoticeBarTest() {
    window.resize(300, 100);
    window.show();
  }
  static QPushButton* button(const NoticeBar& bar) { return bar.findChild<QPushButton*>(); }

  QWidget window;
};

TEST_F(NoticeBarTest, SaysSomethingAndGoesByItself) {
  NoticeBar bar(&window, 20ms);
  const QSignalSpy dismissals(&bar, &NoticeBar::dismissed);
  EXPECT_FALSE(bar.isVisible());
  bar.say(u"Elemento <b>borrado</b>"_s, u"Deshacer"_s);
  EXPECT_TRUE(bar.isVisible());
  EXPECT_EQ(bar.findChild<QLabel*>()->text(), u"Elemento <b>borrado</b>"_s);
  EXPECT_EQ(bar.findChild<QLabel*>()->textFormat(), Qt::PlainText);
  EXPECT_EQ(bar.accessibleName(), u"Elemento <b>borrado</b>"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !bar.isVisible(); }));
  EXPECT_EQ(dismissals.count(), 1);
}

TEST_F(NoticeBarTest, StaysForSeconds) {
  NoticeBar bar(&window);
  EXPECT_GE(NoticeBar::kPatience, 5s);
  bar.say(u"Elemento borrado"_s);
  QTest::qWait(50);
  EXPECT_TRUE(bar.isVisible());
}

TEST_F(NoticeBarTest, SaysTheNextThingWithoutHavingGone) {
  NoticeBar bar(&window);
  const QSignalSpy dismissals(&bar, &NoticeBar::dismissed);
  bar.say(u"Elemento borrado"_s, u"Deshacer"_s);
  EXPECT_TRUE(button(bar)->isVisible());
  bar.say(u"No se puede"_s);
  EXPECT_FALSE(button(bar)->isVisible());
  EXPECT_EQ(dismissals.count(), 0);
  bar.dismiss();
  bar.dismiss();
  EXPECT_EQ(dismissals.count(), 1);
}

TEST_F(NoticeBarTest, TellsWhenItsButtonGoesThatHasTheKeyboard) {
  NoticeBar bar(&window);
  const QSignalSpy released(&bar, &NoticeBar::keyboardReleased);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  bar.say(u"Elemento borrado"_s, u"Deshacer"_s);
  bar.dismiss();
  EXPECT_EQ(released.count(), 0);
  bar.say(u"Elemento borrado"_s, u"Deshacer"_s);
  button(bar)->setFocus();
  bar.dismiss();
  EXPECT_EQ(released.count(), 1);
  bar.say(u"Elemento borrado"_s, u"Deshacer"_s);
  button(bar)->setFocus();
  bar.say(u"No se puede"_s);
  EXPECT_EQ(released.count(), 2);
}

TEST_F(NoticeBarTest, GrowsUntilAllCanBeRead) {
  NoticeBar bar(&window);
  bar.say(u"No"_s);
  const int low = bar.heightForWidth(280);
  bar.say(u"palabra "_s.repeated(30), u"Deshacer"_s);
  EXPECT_GT(bar.heightForWidth(280), low);
  EXPECT_GT(bar.heightForWidth(200), bar.heightForWidth(400));
}

}  // namespace
}  // namespace nimbrel
