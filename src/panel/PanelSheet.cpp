#include "panel/PanelSheet.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "panel/PanelTheme.h"
#include "panel/TextButton.h"

namespace nimbrel {
namespace {

constexpr int kMargin = 16;

/// The surface of the question.
class Card final : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    const PanelTheme theme = panelTheme(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.border);
    painter.setBrush(theme.sheet);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 11, 11);
  }
};

QLabel* label(const QString& text, const QFont& font, const QColor& color, int width, QWidget* parent) {
  auto* const made = new QLabel(text, parent);
  made->setFont(font);
  made->setTextFormat(Qt::PlainText);
  made->setWordWrap(true);
  QPalette colors = made->palette();
  colors.setColor(QPalette::WindowText, color);
  made->setPalette(colors);
  // The card is as high as what is in it; its layout would not ask how many lines that makes.
  made->setMinimumHeight(made->heightForWidth(width));
  return made;
}

}  // namespace

PanelSheet::PanelSheet(const QString& title, QWidget* parent)
    : QWidget(parent), card_(new Card(this)), column_(new QVBoxLayout(card_)) {
  setAccessibleName(title);
  card_->setFixedWidth(kContentWidth + 2 * kMargin);
  column_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column_->setSpacing(10);
  column_->addWidget(
      label(title, panelFont(13, QFont::DemiBold), panelTheme(palette()).text, kContentWidth, card_));
  auto* const middle = new QVBoxLayout(this);
  middle->addStretch(2);
  middle->addWidget(card_, 0, Qt::AlignHCenter);
  middle->addStretch(3);
  parent->installEventFilter(this);
}

void PanelSheet::addContent(QWidget* content) {
  column_->addWidget(content);
  content->installEventFilter(this);
}

QLabel* PanelSheet::addNote(const QString& text) {
  QLabel* const note = label(text, panelFont(11), panelTheme(palette()).secondaryText, kContentWidth, card_);
  column_->addWidget(note);
  return note;
}

void PanelSheet::addButtons(const QString& no, TextButton* yes) {
  auto* const refuse = new TextButton(no, TextButton::Tone::plain, card_);
  refuse->setObjectName(QStringLiteral("sheetNo"));
  yes->setObjectName(QStringLiteral("sheetYes"));
  connect(refuse, &TextButton::clicked, this, &PanelSheet::cancel);
  auto* const row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(refuse);
  row->addWidget(yes);
  column_->addLayout(row);
  if (!firstFocus_) firstFocus_ = refuse;
}

void PanelSheet::open() {
  setGeometry(parentWidget()->rect());
  show();
  raise();
  firstFocus_->setFocus(Qt::PopupFocusReason);
}

void PanelSheet::cancel() {
  close();
}

void PanelSheet::close() {
  if (isHidden()) return;
  hide();
  Q_EMIT closed();
  deleteLater();
}

void PanelSheet::keyPressEvent(QKeyEvent* event) {
  // Nothing that is pressed here is meant for the panel behind.
  event->accept();
  if (event->isAutoRepeat()) return;
  if (event->key() == Qt::Key_Escape) return cancel();
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return;
  if (auto* const button = qobject_cast<QAbstractButton*>(focusWidget())) button->click();
}

void PanelSheet::mousePressEvent(QMouseEvent* event) {
  event->accept();
}

bool PanelSheet::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && watched != parentWidget()) {
    // The Return that opened the question, held for too long, does not answer it.
    const auto& press = static_cast<QKeyEvent&>(*event);
    if (press.isAutoRepeat() && (press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter)) return true;
  }
  if (watched == parentWidget() && event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
  return QWidget::eventFilter(watched, event);
}

bool PanelSheet::focusNextPrevChild(bool next) {
  QList<QWidget*> stops;
  for (QWidget* const child : findChildren<QWidget*>()) {
    if ((child->focusPolicy() & Qt::TabFocus) && child->isEnabled() && child->isVisibleTo(this))
      stops.append(child);
  }
  if (stops.isEmpty()) return true;
  const qsizetype count = stops.size();
  const qsizetype at = stops.indexOf(focusWidget());
  stops.at((at + (next ? 1 : count - 1) + count) % count)->setFocus(Qt::TabFocusReason);
  return true;
}

void PanelSheet::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(panelTheme(palette()).veil);
  // The panel's own corners.
  painter.drawRoundedRect(rect(), 11, 11);
}

}  // namespace nimbrel
