#include "app/PanelController.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include "panel/NoticeBar.h"
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
    controller = std::make_unique<PanelController>(
        PanelParts{.services = services(),
                   .keystrokes = keystrokes,
                   .defaults = defaults,
                   .makeWindow =
                       [this](QWidget& widget) {
                         auto made = std::make_unique<testing::FakePanelWindow>(widget);
                         window = made.get();
                         return made;
                       },
                   .preview = preview,
                   .sideFiles = files,
                   .previewFolder = temporary.filePath(u"preview"_s),
                   .lock = lock,
                   .notify = [this](const QString& title, const QString&) { notified.append(title); }});
  }
  ~PanelControllerTest() override { controller.reset(); }

  void press(Qt::Key key) {
    QTest::keyClick(controller->content().findChild<QLineEdit*>(u"searchField"_s), key);
  }

  /// Opens the preview of the selected clip.
  void openPreview() {
    press(Qt::Key_Space);
    ASSERT_TRUE(QTest::qWaitFor([this] { return preview.visible; }));
  }
  [[nodiscard]] QByteArray previewed() const {
    QFile file(preview.item ? preview.item->toLocalFile() : QString());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  testing::FakeKeystrokePoster keystrokes;
  testing::FakeUserDefaults defaults;
  testing::FakePanelWindow* window = nullptr;
  QStringList notified;
  testing::FakePreviewPanel preview;
  testing::FakeDeviceAuthenticator authenticator;
  QTemporaryDir temporary;
  Lock lock{authenticator, clock};
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
  EXPECT_EQ(notified, QStringList{u"No se ha pegado"_s});
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

TEST_F(PanelControllerTest, TheSpaceBarPreviewsAndEscapeClosesThePreviewFirst) {
  controller->togglePanel();
  openPreview();
  press(Qt::Key_Escape);
  EXPECT_FALSE(preview.visible);
  EXPECT_TRUE(controller->isVisible());
  press(Qt::Key_Escape);
  EXPECT_FALSE(controller->isVisible());
}

TEST_F(PanelControllerTest, ThePreviewFollowsTheArrowKeys) {
  copyText(u"adiós"_s);
  controller->togglePanel();
  openPreview();
  EXPECT_EQ(previewed(), "adiós");
  press(Qt::Key_Down);
  EXPECT_TRUE(QTest::qWaitFor([this] { return previewed() == "hola"; }));
}

TEST_F(PanelControllerTest, StaysWhileThePreviewIsOpenAndGoesWithItOtherwise) {
  controller->togglePanel();
  openPreview();
  window->resign();
  EXPECT_TRUE(controller->isVisible());
  controller->togglePanel();
  EXPECT_FALSE(controller->isVisible());
  EXPECT_FALSE(preview.visible);
}

TEST_F(PanelControllerTest, HasTheKeyboardAgainWhenThePreviewCloses) {
  controller->togglePanel();
  openPreview();
  preview.close();
  EXPECT_EQ(window->stepsForward, 1);
}

TEST_F(PanelControllerTest, StaysWhenTheKeyboardWandersAsThePreviewCloses) {
  controller->togglePanel();
  openPreview();
  preview.close();
  clock.advance(100ms);
  window->resign();
  EXPECT_TRUE(controller->isVisible());
  // Only when the window has heard of it: before, it would let go of what it has just taken.
  EXPECT_EQ(window->stepsForward, 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(window->stepsForward, 2);
  clock.advance(50ms);
  window->resign();
  EXPECT_FALSE(controller->isVisible());
}

TEST_F(PanelControllerTest, PastesWithThePreviewOpenAndLeavesNoFile) {
  controller->togglePanel();
  openPreview();
  const QString file = preview.item->toLocalFile();
  press(Qt::Key_Return);
  EXPECT_FALSE(preview.visible);
  EXPECT_FALSE(QFile::exists(file));
}

TEST_F(PanelControllerTest, DoesNotPreviewASecretUntilItIsShown) {
  copySecret(u"secreto"_s);
  controller->togglePanel();
  press(Qt::Key_Space);
  EXPECT_EQ(controller->content().findChild<NoticeBar*>()->findChild<QLabel*>()->text(),
            u"Este elemento está oculto.");
  press(Qt::Key_Down);
  openPreview();
  press(Qt::Key_Up);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !preview.item; }));
  EXPECT_TRUE(preview.visible);
}

TEST_F(PanelControllerTest, StaysWhileTheSystemAsksForThePasswordAndAMomentLonger) {
  lock.setAfterAuthentication([this] { controller->refocusPanel(); });
  controller->togglePanel();
  lock.authenticate(Lock::Reason::clip, [](bool) {});
  EXPECT_EQ(window->stepsBack, 1);
  window->resign();
  EXPECT_TRUE(controller->isVisible());
  authenticator.reply(AuthenticationReply::Outcome::refused);
  EXPECT_EQ(window->stepsForward, 1);
  window->resign();
  EXPECT_TRUE(controller->isVisible());
  clock.advance(600ms);
  window->resign();
  EXPECT_FALSE(controller->isVisible());
}

TEST_F(PanelControllerTest, APanelThatWasHiddenMeanwhileDoesNotComeBackAfterThePrompt) {
  lock.setAfterAuthentication([this] { controller->refocusPanel(); });
  controller->togglePanel();
  lock.authenticate(Lock::Reason::clip, [](bool) {});
  controller->togglePanel();
  authenticator.reply(AuthenticationReply::Outcome::proven);
  EXPECT_FALSE(controller->isVisible());
  EXPECT_EQ(window->stepsForward, 0);
}

TEST_F(PanelControllerTest, LeavesTheKeyboardToThePromptWhileItIsUp) {
  lock.setAfterAuthentication([this] { controller->refocusPanel(); });
  controller->togglePanel();
  openPreview();
  lock.authenticate(Lock::Reason::clip, [](bool) {});
  EXPECT_FALSE(preview.visible);
  const int before = window->stepsForward;
  controller->refocusPanel();
  EXPECT_EQ(window->stepsForward, before);
  // Hidden and shown again, it stands back still.
  controller->togglePanel();
  clock.advance(1s);
  controller->togglePanel();
  EXPECT_EQ(window->stepsBack, 2);
  authenticator.reply(AuthenticationReply::Outcome::proven);
  EXPECT_EQ(window->stepsForward, before + 1);
}

TEST_F(PanelControllerTest, ThePreviewShowsNothingOfTheLastClipWhenItGoes) {
  controller->togglePanel();
  openPreview();
  store().clearHistory();
  EXPECT_EQ(preview.item, std::nullopt);
}

TEST_F(PanelControllerTest, SaysThatNobodyCanBeAsked) {
  authenticator.obstacle = u"polkit no contesta"_s;
  controller->togglePanel();
  lock.authenticate(Lock::Reason::clip, [](bool) {});
  EXPECT_TRUE(controller->content().findChild<NoticeBar*>()->findChild<QLabel*>()->text().startsWith(
      u"No se puede pedir"));
}

TEST_F(PanelControllerTest, HasThePanelsSizes) {
  EXPECT_EQ(controller->panel().panelSize(), QSize(480, 440));
  EXPECT_EQ(controller->panel().minimumSize(), QSize(340, 440));
}

}  // namespace
}  // namespace nimbrel
