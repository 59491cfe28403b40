#include "panel/ConfirmSheet.h"

#include <QLabel>

#include "panel/TextButton.h"

namespace nimbrel {

ConfirmSheet::ConfirmSheet(const QString& title, const QString& note, const QString& yes, QWidget* parent)
    : PanelSheet(title, parent), note_(addNote(note)) {
  setObjectName(QStringLiteral("confirmSheet"));
  auto* const button = new TextButton(yes, TextButton::Tone::danger, this);
  addButtons(tr("Cancelar"), button);
  connect(button, &TextButton::clicked, this, [this] {
    Q_EMIT confirmed();
    close();
  });
}

void ConfirmSheet::setNote(const QString& note) {
  note_->setText(note);
}

}  // namespace nimbrel
