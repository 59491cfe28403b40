#include "platform/linux/X11Workspace.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTest>

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

}  // namespace
}  // namespace nimbrel
