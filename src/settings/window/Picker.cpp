#include "settings/window/Picker.h"

#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>
#include <limits>

namespace nimbrel {

Picker::Picker(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
  connect(this, &QComboBox::activated, this, [this] { Q_EMIT chosen(choice()); });
}

void Picker::addChoice(qint64 value, const QString& text) {
  insertItem(choices_++, text, value);
}

void Picker::setChoice(qint64 value, const QString& otherText) {
  while (count() > choices_)
    removeItem(choices_);
  int index = findData(value);
  if (index < 0) {
    addItem(otherText, value);
    index = choices_;
  }
  setCurrentIndex(index);
}

void Picker::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F4:
      showPopup();
      return;
    default:
      event->ignore();
  }
}

void Picker::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

int grammaticalNumber(qint64 count) {
  return static_cast<int>(std::min<qint64>(count, std::numeric_limits<int>::max()));
}

}  // namespace nimbrel
