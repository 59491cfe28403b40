#include "platform/linux/X11Workspace.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTest>
#include <QWidget>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(X11Workspace, NamesTheApplicationOfTheActiveWindow) {
  X11Session session;
  DesktopEntries entries{{}};
  const X11Workspace workspace(session, entries);
  QProcess terminal;
  terminal.start(u"xterm"_s, {u"-class"_s, u"KeePassXC"_s});
  ASSERT_TRUE(terminal.waitForStarted());
  std::optional<RunningApplication> front;
  EXPECT_TRUE(QTest::qWaitFor([&] {
    front = workspace.frontmostApplication();
    return front.has_value();
  }));
  terminal.kill();
  terminal.waitForFinished();
  ASSERT_TRUE(front);
  // The window class of a password manager, under the name by which it is ignored.
  EXPECT_EQ(front->identifier, u"org.keepassxc.keepassxc"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !workspace.frontmostApplication(); }));
}

TEST(X11Workspace, NamesTheTopmostApplicationBesideThisOne) {
  X11Session session;
  DesktopEntries entries{{}};
  const X11Workspace workspace(session, entries);
  const auto other = [&] {
    const auto found = workspace.frontmostOtherApplication();
    return found ? found->identifier : QString();
  };
  EXPECT_EQ(other(), QString());
  QProcess first;
  first.start(u"xterm"_s, {u"-class"_s, u"First"_s, u"-geometry"_s, u"20x5+700+100"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return other() == u"First"; }, 10000));
  QProcess second;
  second.start(u"xterm"_s, {u"-class"_s, u"Second"_s, u"-geometry"_s, u"20x5+700+400"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return other() == u"Second"; }, 10000));
  QWidget own;
  own.resize(200, 200);
  own.show();
  own.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&own));
  EXPECT_EQ(other(), u"Second");
  // What the user has put away is not what he works in.
  QProcess::execute(u"sh"_s, {u"-c"_s, u"xdotool search --class Second windowminimize"_s});
  EXPECT_TRUE(QTest::qWaitFor([&] { return other() == u"First"; }));
  for (QProcess* const terminal : {&first, &second}) {
    terminal->kill();
    terminal->waitForFinished();
  }
}

}  // namespace
}  // namespace nimbrel
