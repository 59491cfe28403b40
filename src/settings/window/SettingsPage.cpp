#include "settings/window/SettingsPage.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

#include "look/Tones.h"

namespace nimbrel {
namespace {

constexpr int kMargin = 16;
constexpr int kSpacing = 6;
constexpr int kSectionSpacing = 10;
constexpr int kRowMargin = 10;
constexpr int kRowSpacing = 5;

/// The rounded ground of a section's rows, with a line between each two of them.
class Card final : public QWidget {
 public:
  explicit Card(QWidget* parent) : QWidget(parent) {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 2, 0, 2);
    rows->setSpacing(0);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const QColor window = palette().color(QPalette::Window);
    const QColor text = palette().color(QPalette::WindowText);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(blend(text, window, 0.14));
    const bool dark = isDark(palette());
    painter.setBrush(blend(dark ? text : QColor(Qt::white), window, dark ? 0.05 : 0.7));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 7, 7);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(blend(text, window, 0.10));
    for (int i = 1; i < layout()->count(); ++i) {
      const int y = layout()->itemAt(i)->geometry().top();
      painter.drawLine(kRowMargin, y, width() - kRowMargin, y);
    }
  }
};

/// A label that keeps its softer colour when the palette changes.
class Caption final : public QLabel {
 public:
  Caption(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setWordWrap(true);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.88);
    setFont(small);
    soften();
  }

 protected:
  void changeEvent(QEvent* event) override {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) soften();
  }

 private:
  void soften() {
    setPalette({});
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText,
                    blend(colors.color(QPalette::WindowText), colors.color(QPalette::Window), 0.68));
    setPalette(colors);
  }
};

}  // namespace

QLabel* headingLabel(const QString& text, QWidget* parent) {
  auto* const label = new QLabel(text, parent);
  QFont bold = label->font();
  bold.setWeight(QFont::DemiBold);
  label->setFont(bold);
  return label;
}

QLabel* captionLabel(const QString& text, QWidget* parent) {
  return new Caption(text, parent);
}

SettingsPage::SettingsPage(QWidget* parent) : QScrollArea(parent) {
  auto* const content = new QWidget(this);
  column_ = new QVBoxLayout(content);
  column_->setContentsMargins(kMargin, kSectionSpacing, kMargin, kSectionSpacing);
  column_->setSpacing(kSpacing);
  column_->addStretch();
  setWidget(content);
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  // The tab's own ground shows through.
  viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
}

void SettingsPage::addSection(const QString& heading) {
  if (card_) column_->insertSpacing(column_->count() - 1, kSectionSpacing - kSpacing);
  if (!heading.isEmpty()) addBare(headingLabel(heading, widget()));
  auto* const card = new Card(widget());
  card->setAccessibleName(heading);
  card_ = static_cast<QVBoxLayout*>(card->layout());
  addBare(card);
}

QVBoxLayout* SettingsPage::newRow() {
  auto* const row = new QVBoxLayout;
  row->setContentsMargins(kRowMargin, kRowSpacing, kRowMargin, kRowSpacing);
  row->setSpacing(1);
  card_->addLayout(row);
  return row;
}

void SettingsPage::addRow(const QString& label, QWidget* control, const QString& caption) {
  auto* const row = newRow();
  auto* const line = new QHBoxLayout;
  auto* const name = new QLabel(label, widget());
  name->setBuddy(control);
  line->addWidget(name);
  line->addStretch();
  line->addWidget(control);
  row->addLayout(line);
  if (control->accessibleName().isEmpty()) control->setAccessibleName(label);
  if (caption.isEmpty()) return;
  row->addWidget(captionLabel(caption, widget()));
  control->setAccessibleDescription(caption);
}

QCheckBox* SettingsPage::addSwitch(const QString& label, const QString& caption) {
  auto* const row = newRow();
  auto* const control = new QCheckBox(label, widget());
  row->addWidget(control);
  if (!caption.isEmpty()) {
    auto* const text = captionLabel(caption, widget());
    // Below the words, not below the box.
    text->setContentsMargins(24, 0, 0, 0);
    row->addWidget(text);
    control->setAccessibleDescription(caption);
  }
  return control;
}

void SettingsPage::addWide(QWidget* widget) {
  newRow()->addWidget(widget);
}

void SettingsPage::addBare(QWidget* widget) {
  // Before the space that is left at the end.
  column_->insertWidget(column_->count() - 1, widget);
}

}  // namespace nimbrel
