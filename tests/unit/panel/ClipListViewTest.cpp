#include "panel/ClipListView.h"

#include <gmock/gmock.h>

#include <QScrollBar>
#include <QSignalSpy>

#include "panel/ClipRow.h"
#include "support/PanelViewFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class ClipListViewTest : public testing::PanelViewFixture {
 protected:
  void hover(int row) {
    QTest::mouseMove(list()->viewport(), list()->visualRect(model()->index(row)).center());
    ASSERT_TRUE(QTest::qWaitFor([&] { return list()->hovered().row() == row; }));
  }
  void leave(int row = 0) {
    // Whether or not it was there, which another test has decided.
    hover(row);
    QTest::mouseMove(field());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !list()->hovered().isValid(); }));
  }
};

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
  leave();
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

TEST_F(ClipListViewTest, PaintsAPictureThatIsNotThereYetWhenItHasCome) {
  launch();
  copyImage("bild");
  quit();
  launch();
  open();
  const QRect icon(0, 0, 110, RowGeometry::kTall);
  const QImage without = list()->viewport()->grab(icon).toImage();
  // Painting has not read the file itself, but asked for it.
  EXPECT_TRUE(QTest::qWaitFor([&] { return list()->viewport()->grab(icon).toImage() != without; }));
}

TEST_F(ClipListViewTest, ShowsTheIconOfTheSourceOnceItIsKnown) {
  QPixmap red(32, 32);
  red.fill(Qt::red);
  applications.icons.insert(u"kate"_s, QIcon(red));
  const QSignalSpy asked(&icons, &InstalledIcons::unknownAskedFor);
  launch();
  workspace.front = RunningApplication{u"org.kde.kate"_s, u"Kate"_s, 1};
  copyText(u"hola"_s);
  workspace.front.reset();
  store().addRemoteText(u"de lejos"_s, RemoteDeviceType::iPhone);
  open();
  const auto colorAt = [this](int row) {
    const QRect area = list()->visualRect(model()->index(row));
    // Near the edge of the icon, beside any letter on a tile.
    return list()->viewport()->grab().toImage().pixelColor(area.left() + 14, area.center().y() - 10);
  };
  EXPECT_NE(colorAt(1), QColor(Qt::red));
  // Only what can be installed here is asked for, and only once.
  view->grab();
  QTest::qWait(1);
  EXPECT_EQ(asked.count(), 1);
  icons.setApplications({{u"org.kde.kate"_s, u"Kate"_s, u"kate"_s}});
  EXPECT_TRUE(QTest::qWaitFor([&] { return colorAt(1) == QColor(Qt::red); }));
  EXPECT_NE(colorAt(0), QColor(Qt::red));
}

TEST_F(ClipListViewTest, TellsTheLengthOfALongTextOnceItHasBeenCounted) {
  launch();
  copyText(u"palabra "_s.repeated(100'000));
  open();
  view->grab();
  EXPECT_TRUE(QTest::qWaitFor([this] { return model()->clipAt(0)->readyTraits() != nullptr; }));
  const QImage counted = view->grab().toImage();
  // What is known of a text stays known when the clip changes.
  store().togglePin(clip(0).id);
  EXPECT_TRUE(model()->clipAt(0)->readyTraits());
  store().togglePin(clip(0).id);
  EXPECT_EQ(view->grab().toImage(), counted);
}

TEST_F(ClipListViewTest, KeepsTheRowUnderThePointerWhereItIsWhateverHappensAboveIt) {
  show(60);
  hover(3);
  const QPersistentModelIndex row = list()->hovered();
  ASSERT_EQ(row.row(), 3);
  const int top = list()->visualRect(row).top();
  const auto stays = [&] { return list()->visualRect(row).top() == top && list()->hovered() == row; };
  copyText(u"nuevo"_s);
  EXPECT_TRUE(stays());
  copyImage("bild");
  EXPECT_TRUE(stays());
  // From far below, and from just above.
  copyText(u"40"_s);
  EXPECT_TRUE(stays());
  copyText(u"2"_s);
  EXPECT_TRUE(stays());
  store().removeClip(clip(1).id);
  EXPECT_TRUE(stays());
}

TEST_F(ClipListViewTest, BringsTheNextRowUnderThePointerWhenOneIsDeletedThere) {
  show(60);
  hover(3);
  const int top = list()->visualRect(list()->hovered()).top();
  store().removeClip(clip(3).id);
  EXPECT_EQ(list()->visualRect(model()->index(3)).top(), top);
  EXPECT_EQ(list()->hovered().row(), 3);
}

TEST_F(ClipListViewTest, StaysWhereItIsWhenRowsMoveOrGoWhileItIsScrolled) {
  show(60);
  leave();
  list()->verticalScrollBar()->setValue(20 * RowGeometry::kLow + 10);
  const auto place = [this](const QString& text) {
    for (int row = 0; row < rows(); ++row) {
      if (model()->clipAt(row)->clip.text == text) return list()->visualRect(model()->index(row)).top();
    }
    return -1;
  };
  const int top = place(u"25"_s);
  copyText(u"50"_s);
  EXPECT_EQ(place(u"25"_s), top);
  copyText(u"10"_s);
  EXPECT_EQ(place(u"25"_s), top);
  // The first to be seen is copied again: the next one comes in its place.
  copyText(u"21"_s);
  EXPECT_EQ(place(u"22"_s), 0);
  const int second = place(u"23"_s);
  store().removeClip(model()->clipAt(0)->clip.id);
  EXPECT_EQ(place(u"23"_s), second);
}

TEST_F(ClipListViewTest, ChoosesNothingElseWhileThePointerIsDrawnOverOtherRows) {
  show(5);
  copySecret(u"sk-abcdef"_s);
  const auto middle = [this](int row) { return list()->visualRect(model()->index(row)).center(); };
  QTest::mousePress(list()->viewport(), Qt::LeftButton, {}, middle(0));
  for (const int row : {1, 2, 3}) {
    QMouseEvent move(QEvent::MouseMove, middle(row), list()->viewport()->mapToGlobal(middle(row)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(list()->viewport(), &move);
  }
  EXPECT_EQ(list()->currentIndex().row(), 0);
  copyText(u"nuevo"_s);
  EXPECT_EQ(list()->currentIndex().row(), 1);
  QTest::mouseRelease(list()->viewport(), Qt::LeftButton, {}, middle(3));
  EXPECT_EQ(selected(), u"sk-abcdef"_s);
}

TEST_F(ClipListViewTest, StaysWhereItIsWhenTheSelectedClipGoes) {
  show(60);
  for (const bool withPointer : {true, false}) {
    list()->verticalScrollBar()->setValue(30 * RowGeometry::kLow);
    const QModelIndex clicked = list()->indexAt({10, 100});
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualRect(clicked).center());
    withPointer ? hover(clicked.row() + 1) : leave(clicked.row());
    const int offset = list()->verticalScrollBar()->value();
    store().removeClip(view->selectedClip()->clip.id);
    EXPECT_EQ(selected(), u"1"_s);
    EXPECT_EQ(list()->verticalScrollBar()->value(), offset - (withPointer ? RowGeometry::kLow : 0));
  }
  // Keys lead to what is selected.
  press(Qt::Key_Down);
  EXPECT_EQ(selected(), u"2"_s);
  EXPECT_EQ(list()->verticalScrollBar()->value(), RowGeometry::kLow);
}

TEST_F(ClipListViewTest, ShowsWhatIsSelectedOnceAKeyHasDeletedAClip) {
  show(60);
  press(Qt::Key_End);
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(selected(), u"1"_s);
  EXPECT_EQ(list()->verticalScrollBar()->value(), 0);
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(selected(), u"60"_s);
  EXPECT_EQ(list()->verticalScrollBar()->value(), list()->verticalScrollBar()->maximum());
}

}  // namespace
}  // namespace nimbrel
