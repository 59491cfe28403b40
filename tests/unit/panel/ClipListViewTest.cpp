#include "panel/ClipListView.h"

#include <gmock/gmock.h>

#include <QScrollBar>
#include <QSignalSpy>

#include "panel/ClipRow.h"
#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

using ClipListViewTest = testing::PanelViewFixture;

TEST_F(ClipListViewTest, GivesImagesMoreRoom) {
  launch();
  copyText(u"uno"_s);
  copyImage("bild");
  copyText(u"dos"_s);
  open();
  EXPECT_EQ(list()->visualRect(model()->index(0)).height(), RowGeometry::kLow);
  EXPECT_EQ(list()->visualRect(model()->index(1)).height(), RowGeometry::kTall);
  EXPECT_EQ(list()->visualRect(model()->index(2)).top(), RowGeometry::kLow + RowGeometry::kTall);
  for (int row = 0; row < 3; ++row)
    EXPECT_EQ(list()->indexAt(list()->visualRect(model()->index(row)).center()).row(), row);
}

TEST_F(ClipListViewTest, KeepsTheSelectedRowInView) {
  show(60);
  for (int i = 0; i < 30; ++i)
    press(Qt::Key_Down);
  EXPECT_TRUE(list()->viewport()->rect().contains(list()->visualRect(list()->currentIndex())));
  press(Qt::Key_End);
  EXPECT_EQ(selected(), u"60"_s);
  EXPECT_TRUE(list()->viewport()->rect().contains(list()->visualRect(list()->currentIndex())));
  press(Qt::Key_PageUp);
  EXPECT_NE(selected(), u"60"_s);
  press(Qt::Key_Home);
  EXPECT_EQ(selected(), u"1"_s);
  EXPECT_EQ(list()->verticalScrollBar()->value(), 0);
  press(Qt::Key_PageDown);
  EXPECT_EQ(selected().toInt(), 1 + list()->rowsPerPage());
}

TEST_F(ClipListViewTest, StaysWhereItIsWhenSomethingIsCopiedWhileItIsScrolled) {
  show(60);
  list()->verticalScrollBar()->setValue(500);
  const QModelIndex below = list()->indexAt({10, 10});
  const QPersistentModelIndex row(below);
  const int top = list()->visualRect(row).top();
  copyText(u"nuevo"_s);
  EXPECT_EQ(list()->visualRect(row).top(), top);
  store().removeClip(clip(0).id);
  EXPECT_EQ(list()->visualRect(row).top(), top);
}

TEST_F(ClipListViewTest, MovesRowsOneByOneAndIsNeverRebuiltByACapture) {
  show(20);
  const QSignalSpy resets(model(), &QAbstractItemModel::modelReset);
  copyText(u"nuevo"_s);
  copyText(u"7"_s);
  store().togglePin(clip(3).id);
  store().removeClip(clip(5).id);
  copyImage("bild");
  EXPECT_EQ(resets.count(), 0);
  EXPECT_EQ(rows(), 21);
  int height = 0;
  for (int row = 0; row < rows(); ++row) {
    EXPECT_EQ(list()->visualRect(model()->index(row)).top() + list()->verticalScrollBar()->value(), height);
    height += list()->visualRect(model()->index(row)).height();
  }
}

TEST_F(ClipListViewTest, LaysATextOutOnceHoweverOftenItIsPainted) {
  show(20);
  auto* const delegate = static_cast<ClipRow*>(list()->itemDelegate());
  view->grab();
  const qsizetype made = delegate->layoutsMade();
  EXPECT_GT(made, 0);
  view->grab();
  press(Qt::Key_Down);
  view->grab();
  EXPECT_EQ(delegate->layoutsMade(), made);
  store().togglePin(clip(0).id);
  view->grab();
  EXPECT_EQ(delegate->layoutsMade(), made + 1);
}

TEST_F(ClipListViewTest, PaintsARowOnlyWithWhatIsInMemory) {
  launch();
  copyImage("bild");
  open();
  // The picture is there; what could be read again is not.
  files.images.clear();
  const QImage before = view->grab().toImage();
  EXPECT_EQ(view->grab().toImage(), before);
}

}  // namespace
}  // namespace nimbrel
