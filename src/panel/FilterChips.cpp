#include "panel/FilterChips.h"

#include <QHBoxLayout>
#include <QPainter>

#include "panel/ClipRowText.h"
#include "panel/PanelTheme.h"
#include "panel/SymbolButton.h"

namespace nimbrel {
namespace {

constexpr int kHeight = 22;
constexpr int kMostWidth = 220;
constexpr int kButton = 18;

}  // namespace

class FilterChips::Chip final : public QWidget {
 public:
  Chip(const QString& name, const QString& clearing, QWidget* parent)
      : QWidget(parent),
        clear(new SymbolButton(QStringLiteral("xmark.circle.fill"), clearing, this, kButton)) {
    setObjectName(name);
    clear->setObjectName(name + QStringLiteral("Clear"));
    setFixedHeight(kHeight);
    setFont(panelFont(11, QFont::Medium));
  }

  void setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    setVisible(!text.isEmpty());
    const int wanted = fontMetrics().horizontalAdvance(text) + 9 + kButton + 6;
    setFixedWidth(qMin(wanted, kMostWidth));
    update();
  }

  SymbolButton* const clear;

 protected:
  void resizeEvent(QResizeEvent*) override { clear->move(width() - kButton - 2, (height() - kButton) / 2); }
  void paintEvent(QPaintEvent*) override {
    const PanelTheme theme = panelTheme(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.chip);
    painter.drawRoundedRect(rect(), kHeight / 2.0, kHeight / 2.0);
    painter.setPen(theme.chipText);
    const QRect area = rect().adjusted(9, 0, -kButton - 4, 0);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text_, Qt::ElideRight, area.width()));
  }

 private:
  QString text_;
};

FilterChips::FilterChips(QWidget* parent)
    : QWidget(parent),
      app_(new Chip(QStringLiteral("appChip"), tr("Quitar el filtro por app"), this)),
      collection_(new Chip(QStringLiteral("collectionChip"), tr("Quitar el filtro por colección"), this)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(10, 0, 10, 8);
  row->setSpacing(6);
  row->addWidget(app_);
  row->addWidget(collection_);
  row->addStretch(1);
  connect(app_->clear, &SymbolButton::clicked, this, &FilterChips::appCleared);
  connect(collection_->clear, &SymbolButton::clicked, this, &FilterChips::collectionCleared);
  setFilter({});
}

void FilterChips::setFilter(const ClipFilter& filter) {
  app_->setText(filter.app ? shownName(*filter.app) : QString());
  collection_->setText(filter.collection.value_or(QString()));
  setVisible(filter.app || filter.collection);
}

}  // namespace nimbrel
