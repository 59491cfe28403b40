#include "app/PanelController.h"

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QTest>

#include "support/PanelFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class PanelControllerTest : public testing::PanelFixture {
 protected:
  PanelControllerTest() {
    launch();
    copyText(u"hola"_s);
    controller =
        std::make_unique<PanelController>(PanelParts{.services = services(),
                                                     .keystrokes = keystrokes,
                                                     .defaults = defaults,
                                                     .makeWindow = [this](QWidget& widget) {
                                                       auto made =
                                                           std::make_unique<testing::FakePanelWindow>(widget);
                                                       window = made.get();
                                                       return made;
                                                     }});
  }
  ~PanelControllerTest() override { controller.reset(); }

  void press(Qt::Key key) {
    QTest::keyClick(controller->content().findChild<QLineEdit*>(u"searchField"_s), key);
  }

  testing::FakeKeystrokePoster keystrokes;
  testing::FakeUserDefaults defaults;
  testing::FakePanelWindow* window = nullptr;
  std::unique_ptr<PanelController> controller;
};

TEST_F(PanelControllerTest, ShowsTheHiddenPanelAndHidesTheVisibleOne) {
  controller->togglePanel();
  EXPECT_TRUE(controller->isVisible());
  controller->togglePanel();
  EXPECT_FALSE(controller->isVisible());
  EXPECT_EQ(window->dismissals, QList<bool>{true});
}

TEST_F(PanelControllerTest, DoesNotReopenWithinAFifthOfASecond) {
  controller->togglePanel();
  window->resign();
  EXPECT_FALSE(controller->isVisible());
  clock.advance(100ms);
  controller->togglePanel();
  EXPECT_FALSE(controller->isVisible());
  clock.advance(100ms);
  controller->togglePanel();
  EXPECT_FALSE(controller->isVisible());
  clock.advance(100ms);
  controller->togglePanel();
  EXPECT_TRUE(controller->isVisible());
}

TEST_F(PanelControllerTest, LeavesTheFocusWhereTheUserPutIt) {
  controller->togglePanel();
  window->resign();
  EXPECT_EQ(window->dismissals, QList<bool>{false});
}

TEST_F(PanelControllerTest, HidesOnEscapeAndGivesTheFocusBack) {
  controller->togglePanel();
  press(Qt::Key_Escape);
  EXPECT_FALSE(controller->isVisible());
  EXPECT_EQ(window->dismissals, QList<bool>{true});
  EXPECT_EQ(keystrokes.pastes, 0);
}

TEST_F(PanelControllerTest, PastesOnceTheFocusIsBack) {
  controller->togglePanel();
  press(Qt::Key_Return);
  EXPECT_FALSE(controller->isVisible());
  EXPECT_EQ(pasteboard.writes.last().text, u"hola"_s);
  EXPECT_FALSE(window->focusHandler);
  ASSERT_TRUE(QTest::qWaitFor([this] { return static_cast<bool>(window->focusHandler); }));
  EXPECT_EQ(keystrokes.pastes, 0);
  window->focusHandler(true);
  EXPECT_EQ(keystrokes.pastes, 1);
}

TEST_F(PanelControllerTest, SendsNothingWhenTheFocusDoesNotComeBack) {
  controller->togglePanel();
  press(Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([this] { return static_cast<bool>(window->focusHandler); }));
  window->focusHandler(false);
  EXPECT_EQ(keystrokes.pastes, 0);
  EXPECT_TRUE(log.has(u"No se pegó"_s));
  EXPECT_EQ(pasteboard.writes.size(), 1);
}

TEST_F(PanelControllerTest, AsksForTrustInsteadOfPastingWithoutIt) {
  trust.trusted = false;
  controller->togglePanel();
  press(Qt::Key_Return);
  EXPECT_EQ(trust.requests, 1);
  EXPECT_FALSE(controller->isVisible());
  QTest::qWait(100);
  EXPECT_FALSE(window->focusHandler);
}

TEST_F(PanelControllerTest, DoesNotPasteIntoThePanelThatIsBack) {
  controller->togglePanel();
  press(Qt::Key_Return);
  clock.advance(300ms);
  controller->togglePanel();
  QTest::qWait(100);
  EXPECT_FALSE(window->focusHandler);
}

TEST_F(PanelControllerTest, HasThePanelsSizes) {
  EXPECT_EQ(controller->panel().panelSize(), QSize(480, 440));
  EXPECT_EQ(controller->panel().minimumSize(), QSize(340, 440));
}

}  // namespace
}  // namespace nimbrel
