#include <gmock/gmock.h>

#include <QSignalSpy>

#include "panel/SymbolButton.h"
#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// Secrets: how they are shown, and how not.
class PanelUnlock : public testing::PanelViewFixture {
 protected:
  PanelUnlock() {
    launch();
    copyText(u"hola"_s);
    copySecret(u"sk-abcdef"_s);
  }
  /// Lets the user prove who they are, when the test says so.
  void lock() {
    settings.lockMode = LockMode::sensitiveOnly;
    authenticate = [this](const std::function<void(bool)>& answer) { answers.append(answer); };
  }
  Secrecy secrecy() { return model()->secrecyOf(0); }
  SymbolButton* unlockButton() {
    list()->setFocus(Qt::TabFocusReason);
    return find<SymbolButton>(u"rowUnlock"_s);
  }

  QList<std::function<void(bool)>> answers;
};

TEST_F(PanelUnlock, WithoutALockTheEyeShowsASecretUntilThePanelGoes) {
  open();
  EXPECT_EQ(secrecy(), Secrecy::masked);
  EXPECT_EQ(unlockButton()->symbol(), u"eye"_s);
  EXPECT_EQ(unlockButton()->accessibleName(), u"Mostrar el contenido"_s);
  unlockButton()->click();
  EXPECT_EQ(secrecy(), Secrecy::revealed);
  EXPECT_TRUE(model()->index(0).data().toString().contains(u"abcdef"));
  EXPECT_FALSE(unlockButton()->isVisible());
  view->panelDidHide();
  EXPECT_EQ(secrecy(), Secrecy::masked);
}

TEST_F(PanelUnlock, WithALockTheUserProvesWhoTheyAre) {
  lock();
  open();
  EXPECT_EQ(unlockButton()->symbol(), u"touchid"_s);
  EXPECT_EQ(unlockButton()->accessibleName(), u"Desbloquear con Touch ID"_s);
  unlockButton()->click();
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(secrecy(), Secrecy::masked);
  answers.first()(false);
  EXPECT_EQ(secrecy(), Secrecy::masked);
  unlockButton()->click();
  answers.last()(true);
  EXPECT_EQ(secrecy(), Secrecy::revealed);
}

TEST_F(PanelUnlock, AProofThatComesAfterThePanelHasGoneShowsNothing) {
  lock();
  open();
  unlockButton()->click();
  view->panelDidHide();
  view->panelDidShow();
  answers.first()(true);
  EXPECT_EQ(secrecy(), Secrecy::masked);
}

TEST_F(PanelUnlock, AfterTheKeyboardHasUnlockedItDoesNotStandOnTheButtonThatPastes) {
  open();
  SymbolButton* const unlock = unlockButton();
  unlock->setFocus(Qt::TabFocusReason);
  QTest::keyClick(unlock, Qt::Key_Return);
  EXPECT_EQ(secrecy(), Secrecy::revealed);
  EXPECT_TRUE(list()->hasFocus());
}

TEST_F(PanelUnlock, WithALockThatNothingOpensThereIsNoButton) {
  settings.lockMode = LockMode::sensitiveOnly;
  open();
  EXPECT_FALSE(unlockButton()->isVisible());
  EXPECT_FALSE(entries(*clipMenu()).contains(u"Desbloquear con Touch ID"_s));
}

TEST_F(PanelUnlock, TheMenuUnlocksToo) {
  lock();
  open();
  choose(clipMenu(), u"Desbloquear con Touch ID"_s);
  ASSERT_EQ(answers.size(), 1);
  answers.first()(true);
  EXPECT_EQ(secrecy(), Secrecy::revealed);
  EXPECT_FALSE(entries(*clipMenu()).contains(u"Desbloquear con Touch ID"_s));
}

TEST_F(PanelUnlock, ASecretIsPreviewedOnlyWhenItIsShown) {
  open();
  const QSignalSpy previews(view.get(), &ContentView::quickLookRequested);
  press(Qt::Key_Space);
  press(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(previews.count(), 0);
  EXPECT_EQ(find(u"noticeBar"_s)->accessibleName(), u"Este elemento está oculto."_s);
  EXPECT_FALSE(entries(*clipMenu()).contains(u"Vista rápida"_s));
  model()->reveal(clip(0).id);
  press(Qt::Key_Space);
  EXPECT_EQ(previews.count(), 1);
}

TEST_F(PanelUnlock, APreviewFollowsTheSelectionAndGetsNothingOfASecret) {
  open();
  QList<ClipRef> followed;
  QObject::connect(view.get(), &ContentView::quickLookSelectionChanged, view.get(),
                   [&](const ClipRef& clip) { followed.append(clip); });
  press(Qt::Key_Down);
  press(Qt::Key_Up);
  ASSERT_EQ(followed.size(), 2);
  ASSERT_TRUE(followed.first());
  EXPECT_EQ(followed.first()->clip.text, u"hola"_s);
  EXPECT_FALSE(followed.last());
}

TEST_F(PanelUnlock, ASpaceIsForTheQueryOnceThereIsOne) {
  open();
  const QSignalSpy previews(view.get(), &ContentView::quickLookRequested);
  type(u"hola"_s);
  press(Qt::Key_Space);
  EXPECT_EQ(field()->text(), u"hola "_s);
  press(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(previews.count(), 1);
  choose(clipMenu(), u"Vista rápida"_s);
  EXPECT_EQ(previews.count(), 2);
}

}  // namespace
}  // namespace nimbrel
