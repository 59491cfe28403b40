#include "panel/RowGeometry.h"

#include <gmock/gmock.h>

#include <QRandomGenerator>

namespace nimbrel {
namespace {

constexpr int kLow = RowGeometry::kLow;
constexpr int kTall = RowGeometry::kTall;

TEST(RowGeometry, PutsEachRowBelowTheOneBefore) {
  RowGeometry rows;
  rows.reset(4, {1, 2});
  EXPECT_EQ(rows.top(0), 0);
  EXPECT_EQ(rows.top(1), kLow);
  EXPECT_EQ(rows.top(2), kLow + kTall);
  EXPECT_EQ(rows.top(3), kLow + 2 * kTall);
  EXPECT_EQ(rows.top(4), 2 * kLow + 2 * kTall);
}

TEST(RowGeometry, FindsTheRowAtAHeight) {
  RowGeometry rows;
  EXPECT_EQ(rows.rowAt(0), -1);
  rows.reset(3, {1});
  EXPECT_EQ(rows.rowAt(-5), 0);
  EXPECT_EQ(rows.rowAt(0), 0);
  EXPECT_EQ(rows.rowAt(kLow - 1), 0);
  EXPECT_EQ(rows.rowAt(kLow), 1);
  EXPECT_EQ(rows.rowAt(kLow + kTall - 1), 1);
  EXPECT_EQ(rows.rowAt(kLow + kTall), 2);
  EXPECT_EQ(rows.rowAt(100'000), 2);
}

/// Whatever happens to the rows, the geometry is that of a plain list to which the same happened.
TEST(RowGeometry, AgreesWithAPlainListAfterAnyChanges) {
  QRandomGenerator random(7);
  RowGeometry rows;
  QList<bool> plain;
  for (int step = 0; step < 3000; ++step) {
    const int size = static_cast<int>(plain.size());
    const int at = size == 0 ? 0 : random.bounded(size);
    switch (size < 3 ? 0 : random.bounded(4)) {
      case 0: {
        const bool tall = random.bounded(3) == 0;
        rows.insert(at, tall);
        plain.insert(at, tall);
        break;
      }
      case 1: {
        const int last = qMin(size - 1, at + random.bounded(3));
        rows.remove(at, last);
        plain.remove(at, last - at + 1);
        break;
      }
      case 2: {
        const int to = random.bounded(size);
        rows.move(at, to);
        plain.move(at, to);
        break;
      }
      default:
        rows.setTall(at, !plain.at(at));
        plain[at] = !plain.at(at);
    }
    ASSERT_EQ(rows.rows(), plain.size());
    int top = 0;
    for (int row = 0; row < plain.size(); ++row) {
      ASSERT_EQ(rows.top(row), top);
      ASSERT_EQ(rows.isTall(row), plain.at(row));
      top += plain.at(row) ? kTall : kLow;
    }
  }
}

}  // namespace
}  // namespace nimbrel
