#include "panel/PasteField.h"

#include <QKeyEvent>
#include <utility>

namespace nimbrel {

PasteField::PasteField(PasteboardText pasteboardText, QWidget* parent)
    : QLineEdit(parent), pasteboardText_(std::move(pasteboardText)) {
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(false);
}

void PasteField::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) return pasteText();
  QLineEdit::keyPressEvent(event);
}

void PasteField::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) return;
  QLineEdit::mouseReleaseEvent(event);
}

void PasteField::pasteText() {
  // No more than could be kept is looked at.
  if (const auto text = pasteboardText_()) insert(text->left(maxLength()).simplified());
}

}  // namespace nimbrel
