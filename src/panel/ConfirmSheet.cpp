#include "panel/ConfirmSheet.h"

#include "panel/TextButton.h"

namespace nimbrel {

ConfirmSheet::ConfirmSheet(const QString& title, const QString& note, const QString& yes, QWidget* parent)
    : PanelSheet(title, parent) {
  setObjectName(QStringLiteral("confirmSheet"));
  addNote(note);
  auto* const button = new TextButton(yes, TextButton::Tone::danger, this);
  addButtons(tr("Cancelar"), button);
  connect(button, &TextButton::clicked, this, [this] {
    Q_EMIT confirmed();
    close();
  });
}

}  // namespace nimbrel
