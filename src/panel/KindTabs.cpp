#include "panel/KindTabs.h"

#include <QPainter>
#include <QWheelEvent>

#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

constexpr int kHeight = 28;

}  // namespace

KindTabs::KindTabs(QWidget* parent) : QTabBar(parent) {
  setObjectName(QStringLiteral("kindTabs"));
  setAccessibleName(tr("Tipo de elemento"));
  setDrawBase(false);
  setExpanding(true);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideNone);
  setFocusPolicy(Qt::TabFocus);
  setFixedHeight(kHeight);
  setMinimumWidth(1);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  // One for each kind, in their order.
  for (const QString& label : {tr("Todo"), tr("Texto"), tr("Imágenes"), tr("Archivos"), tr("Fijados")})
    addTab(label);
  connect(this, &QTabBar::currentChanged, this, [this] { Q_EMIT kindChosen(kind()); });
}

ClipKind KindTabs::kind() const {
  return kAllClipKinds.at(static_cast<std::size_t>(qMax(0, currentIndex())));
}

void KindTabs::step(int direction) {
  setCurrentIndex((currentIndex() + direction + count()) % count());
}

QSize KindTabs::tabSizeHint(int index) const {
  // The last takes what division leaves over.
  const int share = width() / qMax(1, count());
  return {index == count() - 1 ? width() - share * (count() - 1) : share, kHeight};
}

QSize KindTabs::minimumTabSizeHint(int index) const {
  return tabSizeHint(index);
}

void KindTabs::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void KindTabs::paintEvent(QPaintEvent*) {
  const PanelTheme theme = panelTheme(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(theme.field);
  painter.drawRoundedRect(rect(), 8, 8);
  for (int i = 0; i < count(); ++i) {
    const bool chosen = i == currentIndex();
    if (chosen) {
      painter.setPen(hasFocus() ? QPen(theme.accent, 2) : QPen(theme.segmentBorder));
      painter.setBrush(theme.segment);
      painter.drawRoundedRect(QRectF(tabRect(i)).adjusted(2.5, 2.5, -2.5, -2.5), 6, 6);
    }
    const QFont font = panelFont(12, chosen ? QFont::DemiBold : QFont::Normal);
    painter.setFont(font);
    painter.setPen(chosen ? theme.text : theme.secondaryText);
    const QString shown = QFontMetrics(font).elidedText(tabText(i), Qt::ElideRight, tabRect(i).width() - 6);
    painter.drawText(tabRect(i), Qt::AlignCenter, shown);
  }
}

}  // namespace nimbrel
