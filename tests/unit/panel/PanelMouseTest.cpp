#include <gmock/gmock.h>

#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

#include "panel/SymbolButton.h"
#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class PanelMouse : public testing::PanelViewFixture {
 protected:
  QPoint middleOf(int row) { return list()->visualRect(model()->index(row)).center(); }
  /// The buttons of a row, which come when the list has the keyboard.
  void chooseRow(int row) {
    list()->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < row; ++i)
      QTest::keyClick(list(), Qt::Key_Down);
    ASSERT_TRUE(find(u"rowActions"_s)->isVisible());
  }
  QString notice() {
    return find(u"noticeBar"_s)->isVisible() ? find(u"noticeBar"_s)->accessibleName() : u""_s;
  }
};

TEST_F(PanelMouse, SelectsWithAClickAndPastesWithTwo) {
  show(3);
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, middleOf(1));
  EXPECT_EQ(selected(), u"2"_s);
  EXPECT_EQ(pastes.count(), 0);
  EXPECT_TRUE(field()->hasFocus());
  QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, middleOf(2));
  QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, middleOf(2));
  EXPECT_EQ(pasted(), u"3"_s);
  EXPECT_EQ(pastes.count(), 1);
}

TEST_F(PanelMouse, OpensTheMenuOfTheRowUnderThePointer) {
  show(3);
  Q_EMIT list()->customContextMenuRequested(middleOf(2));
  EXPECT_EQ(selected(), u"3"_s);
  EXPECT_TRUE(find<QMenu>(u"clipMenu"_s)->isVisible());
  find<QMenu>(u"clipMenu"_s)->close();
  Q_EMIT list()->customContextMenuRequested({10, list()->height() - 2});
  bury();
  EXPECT_FALSE(view->findChild<QMenu*>(u"clipMenu"_s));
}

TEST_F(PanelMouse, ScrollsWithTheWheel) {
  show(50);
  const QPointF at(20, 20);
  QWheelEvent wheel(at, list()->viewport()->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(list()->viewport(), &wheel);
  EXPECT_GT(list()->verticalScrollBar()->value(), 0);
  EXPECT_EQ(selected(), u"1"_s);
}

TEST_F(PanelMouse, ActsOnARowByItsButtons) {
  show(3);
  chooseRow(1);
  click(u"rowPin"_s);
  EXPECT_TRUE(clip(1).pinned);
  EXPECT_EQ(find<SymbolButton>(u"rowPin"_s)->accessibleName(), u"Desfijar"_s);
  click(u"rowQueue"_s);
  EXPECT_TRUE(store().isQueued(clip(1).id));
  EXPECT_EQ(find<SymbolButton>(u"rowQueue"_s)->symbol(), u"list.bullet.circle.fill"_s);
  click(u"rowPaste"_s);
  EXPECT_EQ(pasted(), u"2"_s);
  click(u"rowRemove"_s);
  EXPECT_EQ(texts(), (QStringList{u"1"_s, u"3"_s}));
}

TEST_F(PanelMouse, TakesTheButtonsOfARowAwayWithTheKeyboard) {
  show(3);
  QTest::mouseMove(field());
  chooseRow(0);
  find(u"rowRemove"_s)->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(find(u"rowActions"_s)->isVisible());
  field()->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !find(u"rowActions"_s)->isVisible(); }));
}

TEST_F(PanelMouse, NeverActsOnAnotherClipThanTheOnePressed) {
  show(2);
  chooseRow(0);
  auto* const remove = find<SymbolButton>(u"rowRemove"_s);
  QTest::mousePress(remove, Qt::LeftButton);
  // The clip goes by itself while the button is held down.
  store().removeClip(clip(0).id);
  QTest::mouseRelease(remove, Qt::LeftButton);
  EXPECT_EQ(texts(), QStringList{u"2"_s});
}

TEST_F(PanelMouse, UndoesADeletionForSomeSeconds) {
  show(3);
  store().togglePin(clip(1).id);
  store().addToQueue(clip(1).id);
  const ClipItem before = clip(1);
  press(Qt::Key_Down);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(texts(), (QStringList{u"1"_s, u"3"_s}));
  EXPECT_EQ(notice(), u"Elemento borrado"_s);
  click(u"noticeButton"_s);
  EXPECT_EQ(clip(1), before);
  EXPECT_TRUE(store().isQueued(before.id));
  EXPECT_EQ(selected(), u"2"_s);
  EXPECT_TRUE(notice().isEmpty());
}

TEST_F(PanelMouse, UndoesSeveralDeletionsOneByOneWithTheKeyboard) {
  show(3);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(texts(), QStringList{u"3"_s});
  press(Qt::Key_Z, Qt::ControlModifier);
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(texts(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
}

TEST_F(PanelMouse, LetsADeletedClipGoWithThePanel) {
  show(2);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  view->panelDidHide();
  EXPECT_FALSE(store().canUndoRemoval());
}

TEST_F(PanelMouse, KeepsTheWayBackWhileItSaysSomethingElse) {
  show(2);
  const ClipItem before = clip(0);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  copySecret(u"sk-abcdef"_s);
  press(Qt::Key_Home);
  press(Qt::Key_Space);
  EXPECT_EQ(notice(), u"Este elemento está oculto."_s);
  EXPECT_EQ(find<QAbstractButton>(u"noticeButton"_s)->text(), u"Deshacer borrado"_s);
  click(u"noticeButton"_s);
  EXPECT_EQ(clip(1), before);
}

TEST_F(PanelMouse, OffersNoOtherClipBackOnceASecretIsGone) {
  show(2);
  copySecret(u"sk-abcdef"_s);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_TRUE(store().canUndoRemoval());
  press(Qt::Key_Home);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_FALSE(store().canUndoRemoval());
  EXPECT_FALSE(find(u"noticeButton"_s)->isVisible());
}

TEST_F(PanelMouse, GivesTheFieldTheKeyboardWhenItHasNothingToSayAnyMore) {
  show(2);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  find(u"noticeButton"_s)->setFocus(Qt::TabFocusReason);
  store().undoRemoval();
  QTest::keyClick(find(u"noticeButton"_s), Qt::Key_Escape);
  view->panelDidHide();
  EXPECT_TRUE(field()->hasFocus());
}

TEST_F(PanelMouse, OffersNoWayBackToASecret) {
  launch();
  copySecret(u"sk-abcdef"_s);
  open();
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_TRUE(texts().isEmpty());
  EXPECT_EQ(notice(), u"Elemento borrado"_s);
  EXPECT_FALSE(find(u"noticeButton"_s)->isVisible());
  EXPECT_FALSE(store().canUndoRemoval());
}

TEST_F(PanelMouse, DragsAClipOutButNeverAMaskedOne) {
  launch();
  copyRtf(u"hola"_s, "{\\rtf1 hola}");
  copySecret(u"sk-abcdef"_s);
  copyFile(u"/tmp/a.txt"_s);
  copyImage("bild");
  open();
  const auto dragged = [this](int row) {
    return std::unique_ptr<QMimeData>(model()->mimeData({model()->index(row)}));
  };
  const auto canDrag = [this](int row) { return bool(model()->index(row).flags() & Qt::ItemIsDragEnabled); };
  EXPECT_TRUE(canDrag(0));
  EXPECT_TRUE(dragged(0)->hasFormat(u"image/png"_s));
  EXPECT_EQ(dragged(1)->urls(), QList<QUrl>{QUrl::fromLocalFile(u"/tmp/a.txt"_s)});
  EXPECT_FALSE(canDrag(2));
  EXPECT_FALSE(dragged(2));
  EXPECT_EQ(dragged(3)->text(), u"hola"_s);
  EXPECT_EQ(dragged(3)->data(u"text/rtf"_s), "{\\rtf1 hola}");
  model()->reveal(clip(2).id);
  EXPECT_TRUE(canDrag(2));
}

TEST_F(PanelMouse, ReachesEveryControlWithTab) {
  launch();
  copySecret(u"sk-abcdef"_s);
  store().setPaused(true);
  open();
  QStringList reached;
  for (int i = 0; i < 20; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const QString name = QApplication::focusWidget()->objectName();
    if (reached.contains(name) && !name.isEmpty()) break;
    reached.append(name);
  }
  for (const QString& name : {u"filterButton"_s, u"gear"_s, u"kindTabs"_s, u"clipList"_s, u"rowUnlock"_s,
                              u"rowPaste"_s, u"rowRemove"_s, u"searchField"_s})
    EXPECT_TRUE(reached.contains(name)) << name.toStdString();
}

TEST_F(PanelMouse, PutsWhatIsTypedAnywhereIntoTheSearchField) {
  show(12);
  list()->setFocus(Qt::TabFocusReason);
  QTest::keyClick(list(), Qt::Key_1);
  settle();
  EXPECT_EQ(field()->text(), u"1"_s);
  EXPECT_TRUE(field()->hasFocus());
  EXPECT_EQ(rows(), 4);
}

TEST_F(PanelMouse, PressesTheButtonThatHasTheKeyboardWithReturn) {
  show(2);
  list()->setFocus(Qt::TabFocusReason);
  auto* const pin = find<SymbolButton>(u"rowPin"_s);
  pin->setFocus(Qt::TabFocusReason);
  QTest::keyClick(pin, Qt::Key_Return);
  EXPECT_TRUE(clip(0).pinned);
  EXPECT_TRUE(pasteboard.writes.isEmpty());
}

}  // namespace
}  // namespace nimbrel
