#include "platform/linux/X11PanelWindow.h"

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <algorithm>

#include "platform/linux/X11Workspace.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// The panel's window over a terminal that has the focus.
class X11PanelWindowTest : public ::testing::Test {
 protected:
  X11PanelWindowTest() {
    terminal.start(u"xterm"_s, {});
    DesktopEntries none{{}};
    const X11Workspace workspace(session, none);
    EXPECT_TRUE(QTest::qWaitFor([&] { return workspace.frontmostApplication().has_value(); }, 20000));
    EXPECT_TRUE(QTest::qWaitFor([this] { return session.focusWindow() > XCB_INPUT_FOCUS_POINTER_ROOT; }));
    // The window manager and the terminal settle on one window; the test begins when they have.
    do {
      before = session.focusWindow();
      QTest::qWait(100);
    } while (session.focusWindow() != before);
    field.resize(300, 60);
    window.setResignHandler([this] { ++resigned; });
  }
  ~X11PanelWindowTest() override { closeTerminal(); }

  void closeTerminal() {
    terminal.kill();
    terminal.waitForFinished();
  }
  static void xdotool(const QStringList& arguments) {
    EXPECT_EQ(QProcess::execute(u"xdotool"_s, arguments), 0);
  }
  /// What `whenFocusReturned` answers.
  [[nodiscard]] bool focusReturned() {
    std::optional<bool> answer;
    window.whenFocusReturned([&](bool returned) { answer = returned; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }));
    return answer.value_or(false);
  }
  [[nodiscard]] bool hasFocus() { return session.focusWindow() == static_cast<xcb_window_t>(field.winId()); }

  /// The window, or its frame, among those of the desktop.
  [[nodiscard]] xcb_window_t topLevelOf(xcb_window_t inner) {
    for (;;) {
      const auto tree = session.reply(xcb_query_tree_reply, xcb_query_tree(session.connection(), inner));
      if (!tree || tree->parent == session.root()) return inner;
      inner = tree->parent;
    }
  }
  /// Whether the panel's window is below another one.
  [[nodiscard]] bool isBelow(xcb_window_t other) {
    const auto tree =
        session.reply(xcb_query_tree_reply, xcb_query_tree(session.connection(), session.root()));
    if (!tree) return false;
    const auto* const first = xcb_query_tree_children(tree.get());
    const auto* const end = first + xcb_query_tree_children_length(tree.get());
    return std::find(first, end, static_cast<xcb_window_t>(field.winId())) < std::find(first, end, other);
  }
  [[nodiscard]] static bool canGrabKeyboard() {
    X11Session other;
    const auto grab = other.reply(xcb_grab_keyboard_reply,
                                  xcb_grab_keyboard(other.connection(), 0, other.root(), XCB_CURRENT_TIME,
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    return grab && grab->status == XCB_GRAB_STATUS_SUCCESS;
  }

  X11Session session;
  QProcess terminal;
  xcb_window_t before = XCB_WINDOW_NONE;
  QLineEdit field;
  X11PanelWindow window{field, session};
  int resigned = 0;
};

TEST_F(X11PanelWindowTest, TakesTheKeysWhileTheFocusStaysWhereItIs) {
  window.present();
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  xdotool({u"type"_s, u"hola"_s});
  EXPECT_TRUE(QTest::qWaitFor([this] { return field.text() == u"hola"_s; }));
  EXPECT_EQ(session.focusWindow(), before);
  window.dismiss(true);
  EXPECT_EQ(session.focusWindow(), before);
  EXPECT_TRUE(focusReturned());
  EXPECT_EQ(resigned, 0);
}

TEST_F(X11PanelWindowTest, TakesTheKeysAgainEachTimeItIsShown) {
  for (const QString& text : {u"uno"_s, u"dos"_s}) {
    field.clear();
    window.present();
    field.setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
    xdotool({u"type"_s, text});
    EXPECT_TRUE(QTest::qWaitFor([&] { return field.text() == text; })) << text.toStdString();
    window.dismiss(true);
  }
}

TEST_F(X11PanelWindowTest, BorrowsTheFocusWhileSomebodyElseHoldsTheKeyboard) {
  X11Session holder;
  const auto grab = holder.reply(xcb_grab_keyboard_reply,
                                 xcb_grab_keyboard(holder.connection(), 0, holder.root(), XCB_CURRENT_TIME,
                                                   XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
  window.present();
  EXPECT_TRUE(QTest::qWaitFor([this] { return hasFocus(); }));
  xcb_ungrab_keyboard(holder.connection(), XCB_CURRENT_TIME);
  holder.flush();
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  xdotool({u"type"_s, u"hola"_s});
  EXPECT_TRUE(QTest::qWaitFor([this] { return field.text() == u"hola"_s; }));
  window.dismiss(true);
  EXPECT_TRUE(focusReturned());
  EXPECT_EQ(session.focusWindow(), before);
}

TEST_F(X11PanelWindowTest, SaysWhenTheWindowThatHadTheFocusIsGone) {
  window.present();
  closeTerminal();
  ASSERT_TRUE(QTest::qWaitFor([this] { return session.focusWindow() != before; }));
  window.dismiss(true);
  EXPECT_FALSE(focusReturned());
}

TEST_F(X11PanelWindowTest, ResignsAtAClickOutsideAndNotAtOneInside) {
  field.move(600, 500);
  window.present();
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  xdotool({u"mousemove"_s, u"650"_s, u"520"_s, u"click"_s, u"1"_s});
  QTest::qWait(200);
  EXPECT_EQ(resigned, 0);
  // The wheel is for looking around, also in the window below.
  xdotool({u"mousemove"_s, u"1200"_s, u"850"_s, u"click"_s, u"5"_s});
  QTest::qWait(200);
  EXPECT_EQ(resigned, 0);
  xdotool({u"click"_s, u"1"_s});
  EXPECT_TRUE(QTest::qWaitFor([this] { return resigned == 1; }));
}

TEST_F(X11PanelWindowTest, StepsBackForAPromptAndComesForwardAgain) {
  field.move(300, 200);
  window.present();
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  window.stepBack();
  // What is typed before the prompt is there goes nowhere else.
  EXPECT_TRUE(QTest::qWaitFor([this] { return hasFocus(); }));
  QProcess prompt;
  prompt.start(u"xterm"_s, {u"-geometry"_s, u"40x10+300+200"_s});
  ASSERT_TRUE(QTest::qWaitFor([this] { return !hasFocus() && session.focusWindow() != before; }, 20000));
  EXPECT_TRUE(QTest::qWaitFor([this] { return resigned > 0; }));
  EXPECT_TRUE(field.isVisible());
  EXPECT_TRUE(QTest::qWaitFor([this] { return isBelow(topLevelOf(session.focusWindow())); }));
  prompt.kill();
  prompt.waitForFinished();
  window.comeForward();
  field.clear();
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  xdotool({u"type"_s, u"hola"_s});
  EXPECT_TRUE(QTest::qWaitFor([this] { return field.text() == u"hola"_s; }));
  window.dismiss(true);
  EXPECT_TRUE(focusReturned());
}

TEST_F(X11PanelWindowTest, ComesForwardAlsoWhenNoPromptHasCome) {
  window.present();
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  window.stepBack();
  EXPECT_TRUE(QTest::qWaitFor([this] { return hasFocus(); }));
  window.comeForward();
  EXPECT_TRUE(QTest::qWaitFor([this] { return session.focusWindow() == before; }));
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  xdotool({u"type"_s, u"hola"_s});
  EXPECT_TRUE(QTest::qWaitFor([this] { return field.text() == u"hola"_s; }));
  window.dismiss(true);
  EXPECT_TRUE(focusReturned());
}

TEST_F(X11PanelWindowTest, GivesTheFocusBackWhenItGoesWhileThePromptIsAwaited) {
  window.present();
  window.stepBack();
  EXPECT_TRUE(QTest::qWaitFor([this] { return hasFocus(); }));
  window.dismiss(true);
  EXPECT_TRUE(QTest::qWaitFor([this] { return session.focusWindow() == before; }));
}

TEST_F(X11PanelWindowTest, LetsGoOfTheKeyboardWhenItStaysAfterAClickElsewhere) {
  field.move(600, 500);
  window.present();
  ASSERT_TRUE(QTest::qWaitFor([this] { return field.hasFocus(); }));
  xdotool({u"mousemove"_s, u"1200"_s, u"850"_s, u"click"_s, u"1"_s});
  ASSERT_TRUE(QTest::qWaitFor([this] { return resigned == 1; }));
  // Nobody can have the keyboard while it is held.
  EXPECT_TRUE(QTest::qWaitFor([] { return canGrabKeyboard(); }));
  // And has it again after a click.
  xdotool({u"mousemove"_s, u"650"_s, u"520"_s, u"click"_s, u"1"_s});
  EXPECT_TRUE(QTest::qWaitFor([] { return !canGrabKeyboard(); }));
  window.dismiss(true);
}

TEST_F(X11PanelWindowTest, DoesNothingForAPromptWhenItIsNotThere) {
  window.stepBack();
  window.comeForward();
  EXPECT_EQ(session.focusWindow(), before);
  EXPECT_TRUE(canGrabKeyboard());
}

}  // namespace
}  // namespace nimbrel
