#pragma once

#include <QList>

namespace nimbrel {

/// Where each row of a list is whose rows have one of two heights, in device-independent pixels from the top
/// of the first. Keeps only the tall rows, so that a hundred thousand low ones cost nothing.
class RowGeometry final {
 public:
  static constexpr int kLow = 47;
  static constexpr int kTall = 63;

  /// Forgets everything; the tall rows in ascending order.
  void reset(int rows, const QList<int>& tallRows);
  void insert(int row, bool tall);
  void remove(int first, int last);
  void setTall(int row, bool tall);
  /// The row at `from` is at `to` afterwards.
  void move(int from, int to);

  [[nodiscard]] int rows() const { return rows_; }
  [[nodiscard]] bool isTall(int row) const;
  [[nodiscard]] int height(int row) const { return isTall(row) ? kTall : kLow; }
  /// The upper edge of a row; of the row after the last, the height of all.
  [[nodiscard]] int top(int row) const;
  /// The row at a height, the nearest one outside of the list; −1 when there is none.
  [[nodiscard]] int rowAt(int y) const;

 private:
  [[nodiscard]] qsizetype tallBefore(int row) const;

  int rows_ = 0;
  /// Ascending.
  QList<int> tall_;
};

}  // namespace nimbrel
