#include "panel/CollectionSheet.h"

#include <QHBoxLayout>
#include <algorithm>
#include <utility>

#include "panel/PanelTheme.h"
#include "panel/TextButton.h"

namespace nimbrel {
namespace {

/// A collection's name is a name, not a text.
constexpr qsizetype kMostCharacters = 80;
/// As many as have room beside each other.
constexpr int kMostSuggestions = 3;
constexpr int kSuggestionGap = 6;

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

CollectionSheet::CollectionSheet(const QString& name, QStringList known, PasteboardText pasteboardText,
                                 QWidget* parent)
    : PanelSheet(tr("Asignar a colección"), parent),
      known_(std::move(known)),
      field_(new PasteField(std::move(pasteboardText), this)),
      suggestions_(new QWidget(this)) {
  setObjectName(QStringLiteral("collectionSheet"));
  field_->setObjectName(QStringLiteral("collectionName"));
  field_->setPlaceholderText(tr("Nombre de colección"));
  field_->setAccessibleName(tr("Nombre de colección"));
  field_->setFont(panelFont(13));
  // A name that is longer already stays whole.
  field_->setMaxLength(static_cast<int>(std::max(kMostCharacters, name.size())));
  field_->setText(name);
  field_->setStyleSheet(fieldStyle(panelTheme(palette())));
  field_->selectAll();
  addContent(field_);
  addSuggestions();
  addNote(tr("La colección fija este elemento para conservarlo."));
  auto* const yes = new TextButton(tr("Asignar"), TextButton::Tone::accent, this);
  setFirstFocus(field_);
  addButtons(tr("Cancelar"), yes);
  connect(yes, &TextButton::clicked, this, &CollectionSheet::assignTyped);
  connect(field_, &QLineEdit::returnPressed, this, &CollectionSheet::assignTyped);
}

void CollectionSheet::addSuggestions() {
  if (known_.isEmpty()) return suggestions_->hide();
  auto* const row = new QHBoxLayout(suggestions_);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kSuggestionGap);
  for (int i = 0; i < kMostSuggestions; ++i) {
    auto* const button = new TextButton({}, TextButton::Tone::plain, suggestions_);
    button->setObjectName(QStringLiteral("suggestion%1").arg(i + 1));
    row->addWidget(button);
    connect(button, &TextButton::clicked, this, [this, i] { assign(suggested_.at(i)); });
  }
  row->addStretch(1);
  addContent(suggestions_);
  connect(field_, &QLineEdit::textChanged, this, &CollectionSheet::suggest);
  suggest();
}

void CollectionSheet::suggest() {
  // The name that is there already is no reason to hide the others.
  const QString typed = field_->hasSelectedText() ? QString() : field_->text().trimmed();
  suggested_.clear();
  for (const QString& name : std::as_const(known_)) {
    if (name.contains(typed, Qt::CaseInsensitive)) suggested_.append(name);
  }
  const auto buttons = suggestions_->findChildren<TextButton*>();
  const qsizetype shown = std::min(buttons.size(), suggested_.size());
  // All have the same room; what the short ones leave is of no use to the others.
  const int room =
      shown == 0 ? 0 : (kContentWidth + kSuggestionGap) / static_cast<int>(shown) - kSuggestionGap;
  for (qsizetype i = 0; i < buttons.size(); ++i) {
    buttons.at(i)->setVisible(i < shown);
    if (i < shown) offer(*buttons.at(i), suggested_.at(i), room);
  }
}

void CollectionSheet::offer(TextButton& button, const QString& name, int room) {
  button.setAccessibleName(tr("Colección %1").arg(name));
  button.setText({});
  const int beside = button.sizeHint().width();
  button.setText(button.fontMetrics().elidedText(name, Qt::ElideRight, room - beside));
  // A name's "&" is part of it.
  button.setShortcut({});
  button.setFixedWidth(button.sizeHint().width());
}

void CollectionSheet::assignTyped() {
  const QString name = field_->text().trimmed();
  const auto same = std::find_if(known_.cbegin(), known_.cend(), [&](const QString& known) {
    return known.compare(name, Qt::CaseInsensitive) == 0;
  });
  const bool means = !known_.contains(name) && same != known_.cend();
  assign(means ? *same : name);
}

void CollectionSheet::assign(const QString& name) {
  if (isHidden()) return;
  Q_EMIT assigned(name);
  close();
}

}  // namespace nimbrel
