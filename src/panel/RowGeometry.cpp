#include "panel/RowGeometry.h"

#include <algorithm>

namespace nimbrel {

void RowGeometry::reset(int rows, const QList<int>& tallRows) {
  rows_ = rows;
  tall_ = tallRows;
}

qsizetype RowGeometry::tallBefore(int row) const {
  return std::lower_bound(tall_.begin(), tall_.end(), row) - tall_.begin();
}

bool RowGeometry::isTall(int row) const {
  return std::binary_search(tall_.begin(), tall_.end(), row);
}

void RowGeometry::insert(int row, bool tall) {
  ++rows_;
  const qsizetype place = tallBefore(row);
  for (qsizetype i = place; i < tall_.size(); ++i)
    ++tall_[i];
  if (tall) tall_.insert(place, row);
}

void RowGeometry::remove(int first, int last) {
  const int count = last - first + 1;
  rows_ -= count;
  const qsizetype begin = tallBefore(first);
  const qsizetype end = tallBefore(last + 1);
  tall_.remove(begin, end - begin);
  for (qsizetype i = begin; i < tall_.size(); ++i)
    tall_[i] -= count;
}

void RowGeometry::setTall(int row, bool tall) {
  if (isTall(row) == tall) return;
  if (tall)
    tall_.insert(tallBefore(row), row);
  else
    tall_.removeAt(tallBefore(row));
}

void RowGeometry::move(int from, int to) {
  const bool tall = isTall(from);
  remove(from, from);
  insert(to, tall);
}

int RowGeometry::top(int row) const {
  return row * kLow + static_cast<int>(tallBefore(row)) * (kTall - kLow);
}

int RowGeometry::rowAt(int y) const {
  if (rows_ == 0) return -1;
  int low = 0;
  int high = rows_ - 1;
  while (low < high) {
    const int middle = low + (high - low + 1) / 2;
    if (top(middle) <= y)
      low = middle;
    else
      high = middle - 1;
  }
  return low;
}

}  // namespace nimbrel
