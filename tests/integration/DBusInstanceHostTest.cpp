#include "platform/linux/DBusInstanceHost.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTest>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// Calls a method as another process does; gives dbus-send's exit status.
int call(const QString& method, const QStringList& arguments = {}) {
  QProcess caller;
  caller.start(u"dbus-send"_s,
               QStringList{u"--session"_s, u"--print-reply"_s, u"--dest=app.nimbrel.Nimbrel"_s,
                           u"/app/nimbrel/Nimbrel"_s, u"app.nimbrel.Nimbrel."_s + method} +
                   arguments);
  EXPECT_TRUE(QTest::qWaitFor([&] { return caller.state() == QProcess::NotRunning; }));
  return caller.exitCode();
}
int askToShow() {
  return call(u"Show"_s);
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

TEST(DBusInstanceHost, HandsUrlsOver) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QStringList opened;
  host.setRequests({.openUrls = [&](const QStringList& urls) { opened += urls; }});
  EXPECT_EQ(call(u"OpenUrls"_s, {u"array:string:nimbrel://add?text=a,nimbrel://add?text=b"_s}), 0);
  const QStringList both{u"nimbrel://add?text=a"_s, u"nimbrel://add?text=b"_s};
  EXPECT_TRUE(QTest::qWaitFor([&] { return opened == both; }));
  EXPECT_NE(call(u"OpenUrls"_s, {u"int32:7"_s}), 0);
}

TEST(DBusInstanceHost, KeepsUrlsThatComeTooEarlyButNotWithoutEnd) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  host.OpenUrls({u"nimbrel://add?text=a"_s});
  for (int i = 0; i < 100; ++i)
    host.OpenUrls({QString(1'000'000, u'x')});
  qsizetype characters = 0;
  QStringList opened;
  host.setRequests({.openUrls = [&](const QStringList& urls) {
    opened = urls;
    for (const QString& url : urls)
      characters += url.size();
  }});
  EXPECT_EQ(opened.value(0), u"nimbrel://add?text=a");
  EXPECT_LE(characters, 8'000'000);
}

TEST(DBusInstanceHost, EndsWhenAskedAlsoBeforeAnybodyListens) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  EXPECT_EQ(call(u"Quit"_s), 0);
  int ended = 0;
  host.setRequests({.quit = [&] { ++ended; }});
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(call(u"Quit"_s), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return ended == 2; }));
}

}  // namespace
}  // namespace nimbrel
