#include "panel/CollectionSheet.h"

#include <QCompleter>
#include <QEvent>
#include <QLineEdit>

#include "panel/PanelTheme.h"
#include "panel/TextButton.h"

namespace nimbrel {
namespace {

/// A collection's name is a name, not a text.
constexpr int kMostCharacters = 80;

QString fieldStyle(const PanelTheme& theme) {
  return QStringLiteral(
             "QLineEdit { background: %1; color: %2; border: 1px solid %3; border-radius: 7px; padding: 5px "
             "8px; "
             "selection-background-color: %4; selection-color: %5; }"
             "QLineEdit:focus { border: 2px solid %4; padding: 4px 7px; }")
      .arg(theme.field.name(QColor::HexArgb), theme.text.name(), theme.border.name(QColor::HexArgb),
           theme.accent.name(), theme.background.name());
}

}  // namespace

CollectionSheet::CollectionSheet(const QString& name, const QStringList& known, QWidget* parent)
    : PanelSheet(tr("Asignar a colección"), parent), field_(new QLineEdit(name, this)) {
  setObjectName(QStringLiteral("collectionSheet"));
  const PanelTheme theme = panelTheme(palette());
  field_->setObjectName(QStringLiteral("collectionName"));
  field_->setPlaceholderText(tr("Nombre de colección"));
  field_->setAccessibleName(tr("Nombre de colección"));
  field_->setFont(panelFont(13));
  field_->setMaxLength(kMostCharacters);
  field_->setContextMenuPolicy(Qt::NoContextMenu);
  field_->setStyleSheet(fieldStyle(theme));
  field_->selectAll();
  auto* const completer = new QCompleter(known, field_);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  // In the field itself: a list of its own would take the keyboard from the panel.
  completer->setCompletionMode(QCompleter::InlineCompletion);
  field_->setCompleter(completer);
  addContent(field_);
  addNote(tr("La colección fija este elemento para conservarlo."));
  auto* const yes = new TextButton(tr("Asignar"), TextButton::Tone::accent, this);
  setFirstFocus(field_);
  addButtons(tr("Cancelar"), yes);
  connect(yes, &TextButton::clicked, this, &CollectionSheet::assign);
  connect(field_, &QLineEdit::returnPressed, this, &CollectionSheet::assign);
}

void CollectionSheet::assign() {
  if (isHidden()) return;
  Q_EMIT assigned(field_->text());
  close();
}

}  // namespace nimbrel
