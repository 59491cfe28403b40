#include "panel/ContentView.h"

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QTest>

#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

using ContentViewTest = testing::PanelViewFixture;

TEST_F(ContentViewTest, BeginsWithTheFirstClipAndAnEmptyQuery) {
  show(3);
  EXPECT_EQ(selected(), u"1"_s);
  EXPECT_TRUE(field()->text().isEmpty());
  EXPECT_EQ(field()->placeholderText(), u"Buscar…"_s);
}

TEST_F(ContentViewTest, MovesTheSelectionAndStopsAtBothEnds) {
  show(3);
  press(Qt::Key_Up);
  EXPECT_EQ(selected(), u"1"_s);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(selected(), u"3"_s);
  press(Qt::Key_Down);
  EXPECT_EQ(selected(), u"3"_s);
  press(Qt::Key_Up);
  EXPECT_EQ(selected(), u"2"_s);
}

TEST_F(ContentViewTest, SelectsTheFirstRowDownwardsAndTheLastUpwardsWithoutASelection) {
  show(3);
  list()->setCurrentIndex({});
  press(Qt::Key_Down);
  EXPECT_EQ(selected(), u"1"_s);
  list()->setCurrentIndex({});
  press(Qt::Key_Up);
  EXPECT_EQ(selected(), u"3"_s);
}

TEST_F(ContentViewTest, DoesNothingOnAnEmptyList) {
  show(0);
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  for (const auto key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return})
    press(key);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  press(Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(pastes.count(), 0);
  EXPECT_FALSE(view->selectedClip());
}

TEST_F(ContentViewTest, PastesTheSelectedClipWithReturn) {
  show(3);
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_EQ(pasted(), u"2"_s);
  EXPECT_EQ(pastes.count(), 1);
}

TEST_F(ContentViewTest, PastesWithoutFormattingWithCommandReturn) {
  launch();
  PasteboardSnapshot rich;
  rich.types = {u"public.utf8-plain-text"_s};
  rich.text = u"hola"_s;
  rich.rtf = "{\\rtf1 hola}";
  pasteboard.copy(rich);
  store().tick();
  open();
  press(Qt::Key_Return);
  EXPECT_TRUE(pasteboard.writes.last().rtf);
  press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_FALSE(pasteboard.writes.last().rtf);
}

TEST_F(ContentViewTest, PastesTheNumberedClipsDirectly) {
  show(4);
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  press(Qt::Key_5, Qt::ControlModifier);
  EXPECT_EQ(pastes.count(), 0);
  press(Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(pasted(), u"4"_s);
  press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(pasted(), u"1"_s);
  EXPECT_EQ(pastes.count(), 2);
}

TEST_F(ContentViewTest, AsksForThePasteEvenWhenTheCopyFails) {
  show(1);
  pasteboard.failWrites = true;
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  press(Qt::Key_Return);
  EXPECT_EQ(pastes.count(), 1);
}

TEST_F(ContentViewTest, DeletesAndPinsTheSelectedClip) {
  show(3);
  press(Qt::Key_P, Qt::ControlModifier);
  EXPECT_TRUE(clip(0).pinned);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(texts(), (QStringList{u"2"_s, u"3"_s}));
  EXPECT_EQ(selected(), u"2"_s);
}

TEST_F(ContentViewTest, DoesOnceWhatAHeldKeyMeansAndGoesOnThroughTheRows) {
  show(5);
  const auto hold = [this](int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent held(QEvent::KeyPress, key, modifiers, QString(), true);
    QCoreApplication::sendEvent(field(), &held);
  };
  press(Qt::Key_Down);
  hold(Qt::Key_Down, Qt::NoModifier);
  EXPECT_EQ(selected(), u"3"_s);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  hold(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(rows(), 4);
  hold(Qt::Key_Return, Qt::NoModifier);
  EXPECT_TRUE(pasteboard.writes.isEmpty());
}

TEST_F(ContentViewTest, AsksToBeDismissedByEscape) {
  show(1);
  const QSignalSpy dismissals(view.get(), &ContentView::dismissRequested);
  press(Qt::Key_Escape);
  EXPECT_EQ(dismissals.count(), 1);
}

TEST_F(ContentViewTest, ShowsWhatMatchesTheQuery) {
  show(12);
  type(u"1"_s);
  EXPECT_EQ(list()->model()->rowCount(), 4);
  type(u"2"_s);
  ASSERT_EQ(list()->model()->rowCount(), 1);
  EXPECT_EQ(selected(), u"12"_s);
  press(Qt::Key_Return);
  EXPECT_EQ(pasted(), u"12"_s);
}

TEST_F(ContentViewTest, TellsAnEmptyHistoryFromAnEmptyResult) {
  show(0);
  EXPECT_EQ(list()->emptyText(), u"Nada copiado todavía"_s);
  copyText(u"hola"_s);
  type(u"zz"_s);
  EXPECT_EQ(list()->emptyText(), u"Sin resultados"_s);
}

TEST_F(ContentViewTest, HintsAtWhatTheSelectedClipCanDo) {
  launch();
  copyText(u"hola"_s);
  copyText(u"https://example.org"_s);
  open();
  auto* const hint = view->findChild<QWidget*>(u"hintLine"_s);
  EXPECT_TRUE(hint->accessibleName().contains(u"⌘O abrir enlace"));
  press(Qt::Key_Down);
  EXPECT_TRUE(hint->accessibleName().contains(u"⌘1–9 directo"));
}

TEST_F(ContentViewTest, HintsAtAnImageWithTextAndThenAtAFile) {
  launch();
  copyFile(u"/tmp/a.txt"_s);
  copyReadImage("bild", u"Factura"_s);
  copyImage("ohne");
  open();
  EXPECT_TRUE(hint().contains(u"⌘1–9 directo"));
  press(Qt::Key_Down);
  EXPECT_TRUE(hint().contains(u"↩ pegar imagen   ⌘T pegar su texto"));
  press(Qt::Key_Down);
  EXPECT_TRUE(hint().contains(u"↩ pegar archivo"));
}

TEST_F(ContentViewTest, PastesTheTextOfAnImageAndOpensALinkOnlyWhereThereIsOne) {
  launch();
  copyReadImage("bild", u"Factura"_s);
  copyImage("ohne");
  copyText(u"https://example.org"_s);
  open();
  const QSignalSpy pastes(view.get(), &ContentView::pasteRequested);
  press(Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(pastes.count(), 0);
  press(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(opener.opened, QStringList{u"https://example.org"_s});
  press(Qt::Key_Down);
  press(Qt::Key_T, Qt::ControlModifier);
  press(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(pastes.count(), 0);
  EXPECT_EQ(opener.opened.size(), 1);
  press(Qt::Key_Down);
  press(Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(pasted(), u"Factura"_s);
  EXPECT_EQ(pastes.count(), 1);
}

TEST_F(ContentViewTest, KeepsTheSelectionWhileItsClipIsVisible) {
  show(12);
  press(Qt::Key_Down);
  type(u"2"_s);
  EXPECT_EQ(selected(), u"2"_s);
  field()->clear();
  EXPECT_EQ(selected(), u"2"_s);
  type(u"3"_s);
  EXPECT_EQ(selected(), u"3"_s);
}

TEST_F(ContentViewTest, FollowsTheHistoryWhileItIsOpen) {
  show(3);
  press(Qt::Key_Down);
  copyText(u"nuevo"_s);
  EXPECT_EQ(list()->model()->rowCount(), 4);
  EXPECT_EQ(selected(), u"2"_s);
  copyText(u"3"_s);
  EXPECT_EQ(list()->model()->index(0, 0).data().toString(), u"3"_s);
  EXPECT_EQ(selected(), u"2"_s);
  store().removeClip(view->selectedClip()->clip.id);
  EXPECT_EQ(selected(), u"3"_s);
}

TEST_F(ContentViewTest, ShowsANewClipOnlyIfItMatchesTheQuery) {
  show(3);
  type(u"hola"_s);
  copyText(u"adiós"_s);
  EXPECT_EQ(list()->model()->rowCount(), 0);
  copyText(u"hola mundo"_s);
  EXPECT_EQ(list()->model()->rowCount(), 1);
}

TEST_F(ContentViewTest, NeverGivesTheTextOfASensitiveClipAway) {
  launch();
  grader.grades = {{u"sk-abcdef"_s, SensitivityLevel::hard}};
  copyText(u"sk-abcdef"_s);
  open();
  const QModelIndex index = list()->model()->index(0, 0);
  for (int role = 0; role < Qt::UserRole + 16; ++role)
    EXPECT_FALSE(index.data(role).toString().contains(u"abcdef")) << role;
}

TEST_F(ContentViewTest, PastesIntoTheFieldWithoutAskingTheOwner) {
  show(1);
  pasteboard.copyText(u"dos\npalabras"_s);
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(field()->text(), u"dos palabras"_s);
}

TEST_F(ContentViewTest, BeginsANewUseAfresh) {
  show(3);
  press(Qt::Key_Down);
  type(u"2"_s);
  view->panelDidHide();
  view->panelDidShow();
  EXPECT_TRUE(field()->text().isEmpty());
  EXPECT_EQ(list()->model()->rowCount(), 3);
  EXPECT_EQ(selected(), u"1"_s);
}

TEST_F(ContentViewTest, PaintsLongAndStrangeTexts) {
  launch();
  for (const QString& text : {QString(100'000, u'W'), u"שלום עולם"_s, u"👩‍👩‍👧\t\n\u0301"_s,
                              QString(QChar(0xd800)), QString(u'\0')})
    copyText(text + u'x');
  open();
  view->resize(340, 440);
  const QImage picture = view->grab().toImage();
  EXPECT_EQ(picture.size() / picture.devicePixelRatio(), QSize(340, 440));
}

}  // namespace
}  // namespace nimbrel
