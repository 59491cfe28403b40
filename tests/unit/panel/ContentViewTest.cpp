#include "panel/ContentView.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

#include "support/PanelFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class ContentViewTest : public testing::PanelFixture {
 protected:
  /// A panel over clips with the texts "1" to `count`, the newest first.
  void show(int count) {
    launch();
    for (int i = count; i >= 1; --i)
      copyText(QString::number(i));
    view = std::make_unique<ContentView>(services(), nullptr);
    tester = std::make_unique<QAbstractItemModelTester>(
        list()->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    view->resize(480, 440);
    view->show();
    view->panelDidShow();
  }
  ~ContentViewTest() override {
    tester.reset();
    view.reset();
  }
  QLineEdit* field() { return view->findChild<QLineEdit*>(u"searchField"_s); }
  QListView* list() { return view->findChild<QListView*>(u"clipList"_s); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(field(), key, modifiers);
  }
  QString selected() { return view->selectedClip() ? view->selectedClip()->clip.text : QString(); }
  QString pasted() {
    return pasteboard.writes.isEmpty() ? QString() : pasteboard.writes.last().text.value_or(QString());
  }

  std::unique_ptr<ContentView> view;
  std::unique_ptr<QAbstractItemModelTester> tester;
};

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
  view = std::make_unique<ContentView>(services(), nullptr);
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

TEST_F(ContentViewTest, AsksToBeDismissedByEscape) {
  show(1);
  const QSignalSpy dismissals(view.get(), &ContentView::dismissRequested);
  press(Qt::Key_Escape);
  EXPECT_EQ(dismissals.count(), 1);
}

TEST_F(ContentViewTest, ShowsWhatMatchesTheQuery) {
  show(12);
  QTest::keyClicks(field(), u"1"_s);
  EXPECT_EQ(list()->model()->rowCount(), 4);
  QTest::keyClicks(field(), u"2"_s);
  ASSERT_EQ(list()->model()->rowCount(), 1);
  EXPECT_EQ(selected(), u"12"_s);
  press(Qt::Key_Return);
  EXPECT_EQ(pasted(), u"12"_s);
}

TEST_F(ContentViewTest, TellsAnEmptyHistoryFromAnEmptyResult) {
  show(0);
  EXPECT_EQ(list()->property("emptyText").toString(), u"Nada copiado todavía"_s);
  copyText(u"hola"_s);
  QTest::keyClicks(field(), u"zz"_s);
  EXPECT_EQ(list()->property("emptyText").toString(), u"Sin resultados"_s);
}

TEST_F(ContentViewTest, HintsAtWhatTheSelectedClipCanDo) {
  launch();
  copyText(u"hola"_s);
  copyText(u"https://example.org"_s);
  view = std::make_unique<ContentView>(services(), nullptr);
  auto* const hint = view->findChild<QWidget*>(u"hintLine"_s);
  EXPECT_TRUE(hint->accessibleName().contains(u"⌘O abrir enlace"));
  press(Qt::Key_Down);
  EXPECT_TRUE(hint->accessibleName().contains(u"⌘1–9 directo"));
}

TEST_F(ContentViewTest, KeepsTheSelectionWhileItsClipIsVisible) {
  show(12);
  press(Qt::Key_Down);
  QTest::keyClicks(field(), u"2"_s);
  EXPECT_EQ(selected(), u"2"_s);
  field()->clear();
  EXPECT_EQ(selected(), u"2"_s);
  QTest::keyClicks(field(), u"3"_s);
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
  QTest::keyClicks(field(), u"hola"_s);
  copyText(u"adiós"_s);
  EXPECT_EQ(list()->model()->rowCount(), 0);
  copyText(u"hola mundo"_s);
  EXPECT_EQ(list()->model()->rowCount(), 1);
}

TEST_F(ContentViewTest, NeverGivesTheTextOfASensitiveClipAway) {
  launch();
  grader.grades = {{u"sk-abcdef"_s, SensitivityLevel::hard}};
  copyText(u"sk-abcdef"_s);
  view = std::make_unique<ContentView>(services(), nullptr);
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
  QTest::keyClicks(field(), u"2"_s);
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
  view = std::make_unique<ContentView>(services(), nullptr);
  view->resize(340, 440);
  view->show();
  const QImage picture = view->grab().toImage();
  EXPECT_EQ(picture.size() / picture.devicePixelRatio(), QSize(340, 440));
}

}  // namespace
}  // namespace nimbrel
