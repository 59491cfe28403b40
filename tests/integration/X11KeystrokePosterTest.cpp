#include "platform/linux/X11KeystrokePoster.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTest>

#include "capture/CaptureDecision.h"
#include "platform/linux/X11HotKeyRegistrar.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

constexpr quint32 kShiftCommand = 768;
constexpr quint32 kKeyN = 45;

void xdotool(const QStringList& arguments) {
  ASSERT_EQ(QProcess::execute(u"xdotool"_s, arguments), 0);
}

/// Pasting into a program that has the keyboard, straight from a hot key.
TEST(X11KeystrokePosterTest, PastesWhileTheHotKeyIsStillHeldDown) {
  DesktopEntries entries{{}};
  X11Pasteboard pasteboard{entries};
  pasteboard.setReadPolicy(captureReadPolicy(SettingsValues{}));
  X11Session session;
  X11HotKeyRegistrar registrar(session);
  X11KeystrokePoster poster(session, entries, pasteboard);
  ASSERT_TRUE(registrar.registerHotKey(1, kKeyN, kShiftCommand));
  int presses = 0;
  registrar.setPressHandler([&](quint32) {
    ++presses;
    PasteboardContent content;
    content.text = u"pegado %1 "_s.arg(presses);
    ASSERT_TRUE(pasteboard.write(content));
    poster.postPaste();
  });
  QProcess entry;
  entry.start(QStringLiteral(NIMBREL_QT_ENTRY), QStringList());
  ASSERT_TRUE(entry.waitForStarted());
  xdotool({u"search"_s, u"--sync"_s, u"--name"_s, u"^qt-entry$"_s, u"windowactivate"_s, u"--sync"_s});
  for (int i = 1; i <= 2; ++i) {
    xdotool({u"keydown"_s, u"shift"_s, u"keydown"_s, u"super"_s, u"keydown"_s, u"n"_s});
    ASSERT_TRUE(QTest::qWaitFor([&] { return presses == i; }));
    // Longer than the server waits before it repeats a key.
    QTest::qWait(900);
    xdotool({u"keyup"_s, u"n"_s, u"keyup"_s, u"super"_s, u"keyup"_s, u"shift"_s});
    QTest::qWait(100);
  }
  EXPECT_EQ(presses, 2);
  xdotool({u"key"_s, u"Return"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return entry.state() == QProcess::NotRunning; }));
  EXPECT_EQ(entry.readAllStandardOutput().trimmed(), "pegado 1 pegado 2");
}

}  // namespace
}  // namespace nimbrel
