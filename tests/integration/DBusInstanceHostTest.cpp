#include "platform/linux/DBusInstanceHost.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTest>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// Asks as a second start would, from another process.
int askToShow() {
  QProcess caller;
  caller.start(u"dbus-send"_s, {u"--session"_s, u"--print-reply"_s, u"--dest=app.nimbrel.Nimbrel"_s,
                                u"/app/nimbrel/Nimbrel"_s, u"app.nimbrel.Nimbrel.Show"_s});
  EXPECT_TRUE(QTest::qWaitFor([&] { return caller.state() == QProcess::NotRunning; }));
  return caller.exitCode();
}

TEST(DBusInstanceHost, IsTheFirstAndShowsWhenAsked) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  int shown = 0;
  host.setRequests({.show = [&] { ++shown; }});
  EXPECT_EQ(askToShow(), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown == 1; }));
}

TEST(DBusInstanceHost, KeepsARequestThatComesTooEarly) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  EXPECT_EQ(askToShow(), 0);
  int shown = 0;
  host.setRequests({.show = [&] { ++shown; }});
  EXPECT_EQ(shown, 1);
}

TEST(DBusInstanceHost, GivesTheNameBackWhenItGoes) {
  {
    DBusInstanceHost host;
    ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  }
  EXPECT_NE(askToShow(), 0);
}

}  // namespace
}  // namespace nimbrel
