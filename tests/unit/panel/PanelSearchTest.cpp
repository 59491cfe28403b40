#include <gmock/gmock.h>

#include <QSignalSpy>
#include <random>

#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// What happens between a question and its answer.
class PanelSearch : public testing::PanelViewFixture {
 protected:
  /// Types without waiting for what is found.
  void ask(const QString& text) {
    QTest::keyClicks(field(), text);
    ASSERT_TRUE(model()->isSearching());
  }
  QStringList shown() {
    QStringList texts;
    for (int row = 0; row < rows(); ++row)
      texts.append(model()->clipAt(row)->clip.text);
    return texts;
  }
  /// What a search that starts now would find.
  QStringList expected() {
    QStringList texts;
    for (qsizetype row = 0; row < store().items().size(); ++row) {
      const ClipRef& clip = store().items().at(row);
      if (matchesQuery(*clip, {field()->text(), {}})) texts.append(clip->clip.text);
    }
    return texts;
  }
  QPoint middleOf(int row) { return list()->visualRect(model()->index(row)).center(); }
};

TEST_F(PanelSearch, LeavesTheRowsAloneUntilTheAnswerComes) {
  show(12);
  ask(u"2"_s);
  EXPECT_EQ(rows(), 12);
  settle();
  EXPECT_EQ(shown(), (QStringList{u"2"_s, u"12"_s}));
}

TEST_F(PanelSearch, PastesWhatWasAskedForLast) {
  show(12);
  ask(u"12"_s);
  press(Qt::Key_Return);
  EXPECT_EQ(pasted(), u"12"_s);
}

TEST_F(PanelSearch, PastesWhatWasClickedAndNotWhatIsAboutToCome) {
  show(12);
  ask(u"12"_s);
  QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, middleOf(2));
  QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, middleOf(2));
  EXPECT_EQ(pasted(), u"3"_s);
}

TEST_F(PanelSearch, KeepsNobodyWaitingWhoLeaves) {
  show(12);
  const QSignalSpy dismissals(view.get(), &ContentView::dismissRequested);
  ask(u"12"_s);
  press(Qt::Key_Escape);
  EXPECT_EQ(dismissals.count(), 1);
  EXPECT_TRUE(model()->isSearching());
}

TEST_F(PanelSearch, SaysThatTheHistoryIsNotEmptyAnyMoreEvenOfWhatIsNotFound) {
  show(0);
  type(u"zz"_s);
  EXPECT_EQ(list()->emptyText(), u"Nada copiado todavía"_s);
  copyText(u"hola"_s);
  EXPECT_EQ(list()->emptyText(), u"Sin resultados"_s);
}

TEST_F(PanelSearch, BeginsAgainWithNothingToBeUndoneInTheField) {
  show(3);
  type(u"2"_s);
  view->panelDidHide();
  view->panelDidShow();
  field()->undo();
  EXPECT_TRUE(field()->text().isEmpty());
}

TEST_F(PanelSearch, ShowsTheHistoryAsItIsHoweverMuchHappensWhileItSearches) {
  show(40);
  std::minstd_rand dice(7);
  const auto any = [&](qsizetype count) {
    return static_cast<qsizetype>(dice() % static_cast<unsigned>(count));
  };
  const QList<std::function<void()>> happenings{
      [&] { copyText(QString::number(100 + any(100))); },
      [&] { copyText(clip(any(store().items().size())).text); },
      [&] { copySecret(QString::number(1000 + any(100))); },
      [&] { store().removeClip(clip(any(store().items().size())).id); },
      [&] { store().removeClipForNow(clip(any(store().items().size())).id); },
      [&] { store().undoRemoval(); },
      [&] { store().togglePin(clip(any(store().items().size())).id); },
      [&] { store().setCollection(clip(any(store().items().size())).id, u"Uno"_s); },
  };
  for (const QString& query : {u"1"_s, u"2"_s, u"12"_s, u"3"_s, u"1 3"_s}) {
    for (int round = 0; round < 20; ++round) {
      field()->setText({});
      ask(query);
      for (int i = 0; i < 6; ++i)
        happenings.at(any(happenings.size()))();
      settle();
      ASSERT_EQ(shown(), expected()) << query.toStdString() << " " << round;
    }
  }
}

}  // namespace
}  // namespace nimbrel
