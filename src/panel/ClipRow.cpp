#include "panel/ClipRow.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <array>

#include "look/Symbols.h"
#include "panel/ClipListModel.h"
#include "panel/ClipRowLayout.h"
#include "panel/ClipRowText.h"
#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ClipRow)
};

struct Detail {
  QString symbol;
  QString text;
  bool accented = false;
};

QDateTime toDateTime(std::chrono::duration<double> sinceEpoch) {
  return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(sinceEpoch.count() * 1000));
}

QList<Detail> detailsOf(const IndexedClip& indexed, const QDateTime& now) {
  const ClipItem& clip = indexed.clip;
  const ClipTraits traits = indexed.readyTraits() ? *indexed.readyTraits() : ClipTraits{};
  const QLocale locale;
  QList<Detail> details;
  const auto add = [&](const char* symbol, const QString& text) {
    details.append({QString::fromLatin1(symbol), text});
  };
  if (isMasked(clip)) add("lock.fill", {});
  if (!isMasked(clip) && traits.isLink) add("link", {});
  if (clip.isFile()) add("folder", {});
  if (clip.isImage() && clip.ocrText && !clip.ocrText->isEmpty()) add("text.viewfinder", {});
  if (traits.isTemplate) details.append({QStringLiteral("curlybraces"), Texts::tr("Plantilla"), true});
  if (const QString source = sourceLabel(clip); !source.isEmpty()) add("", source);
  if (const QString length = lengthLabel(indexed, locale); !length.isEmpty()) add("", length);
  if (clip.expiresAt) add("timer", Texts::tr("Se borrará automáticamente"));
  add("clock", relativeDate(toDateTime(clip.date.time_since_epoch()), now, locale));
  return details;
}

/// A colour of its own for each source, always the same.
QColor tileColor(const ClipItem& clip) {
  constexpr std::array kColors{0x3b7dddU, 0x2f9e6eU, 0xe0713aU, 0x7a5bd0U,
                               0x50555fU, 0xc2467aU, 0x1f8a9eU, 0x8a6d1fU};
  const size_t hash = qHash(clip.sourceBundleID.value_or(QString()), 0);
  return QColor::fromRgb(kColors.at(hash % kColors.size()));
}

void drawTile(QPainter& painter, const QRect& square, const ClipItem& clip) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(tileColor(clip));
  painter.drawRoundedRect(square, 7, 7);
  const QString name = clip.sourceName.value_or(QString());
  if (name.isEmpty()) {
    const QString symbol = clip.isImage() ? QStringLiteral("photo") : QStringLiteral("doc.on.clipboard");
    symbols::draw(painter, square.adjusted(6, 6, -6, -6), symbol, Qt::white);
    return;
  }
  painter.setPen(Qt::white);
  painter.setFont(panelFont(12, QFont::Bold));
  painter.drawText(square, Qt::AlignCenter,
                   name.first(name.at(0).isHighSurrogate() ? qMin(2, name.size()) : 1).toUpper());
}

/// The middle of the picture, as large as the square.
void drawPicture(QPainter& painter, const QRect& square, const QImage& picture) {
  const QSizeF shown = QSizeF(square.size()).scaled(picture.size(), Qt::KeepAspectRatio);
  const QRectF source(QPointF((picture.width() - shown.width()) / 2, (picture.height() - shown.height()) / 2),
                      shown);
  QPainterPath outline;
  outline.addRoundedRect(square, 7, 7);
  painter.save();
  painter.setClipPath(outline);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.fillPath(outline, Qt::white);
  painter.drawImage(QRectF(square), picture, source);
  painter.restore();
}

void drawDetails(QPainter& painter, QRect area, const QList<Detail>& details, const PanelTheme& theme) {
  constexpr int kSymbol = 11;
  constexpr int kGap = 8;
  for (const Detail& detail : details) {
    if (area.width() < kSymbol) return;
    const QColor color = detail.accented ? theme.accent : theme.secondaryText;
    painter.setFont(panelFont(11, detail.accented ? QFont::Bold : QFont::Normal));
    painter.setPen(color);
    if (!detail.symbol.isEmpty()) {
      const QRect square(area.left(), area.center().y() - kSymbol / 2, kSymbol, kSymbol);
      symbols::draw(painter, square, detail.symbol, color);
      area.setLeft(square.right() + (detail.text.isEmpty() ? 1 : 4));
    }
    if (!detail.text.isEmpty()) {
      const QString shown = painter.fontMetrics().elidedText(detail.text, Qt::ElideRight, area.width());
      painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
      area.setLeft(area.left() + painter.fontMetrics().horizontalAdvance(shown));
    }
    area.setLeft(area.left() + kGap);
  }
}

void drawBadge(QPainter& painter, const QRect& area, int number, const PanelTheme& theme) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(theme.badge);
  painter.drawRoundedRect(area, 5, 5);
  painter.setPen(theme.secondaryText);
  painter.setFont(panelFont(11));
  painter.drawText(area, Qt::AlignCenter, QStringLiteral("⌘%1").arg(number));
}

void drawSelection(QPainter& painter, const QRect& area, const PanelTheme& theme) {
  painter.setPen(theme.selectionBorder);
  painter.setBrush(theme.selection);
  painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
}

}  // namespace

QSize ClipRow::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {option.rect.width(), ClipRowLayout::height};
}

void ClipRow::drawIcon(QPainter& painter, const QRect& square, const ClipItem& clip) const {
  const bool shows = clip.imageFile && !isMasked(clip);
  const QImage picture = shows ? thumbnails_.thumbnail(*clip.imageFile) : QImage();
  if (picture.isNull()) return drawTile(painter, square, clip);
  drawPicture(painter, square, picture);
}

void ClipRow::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* const model = static_cast<const ClipListModel*>(index.model());
  const ClipRef clip = model->clipAt(index.row());
  const PanelTheme theme = panelTheme(option.palette);
  const bool hasBadge = index.row() < ClipListModel::kDirectRows;
  const ClipRowLayout layout = layoutRow(option.rect.size(), hasBadge, clip->clip.pinned);
  painter->save();
  painter->translate(option.rect.topLeft());
  painter->setRenderHint(QPainter::Antialiasing);
  if (option.state & QStyle::State_Selected) drawSelection(*painter, layout.background, theme);
  drawIcon(*painter, layout.icon, clip->clip);
  painter->setFont(panelFont(13));
  painter->setPen(theme.text);
  const QString preview =
      painter->fontMetrics().elidedText(previewText(clip->clip), Qt::ElideRight, layout.preview.width());
  painter->drawText(layout.preview, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, preview);
  drawDetails(*painter, layout.details, detailsOf(*clip, toDateTime(clock_.now().time_since_epoch())), theme);
  if (clip->clip.pinned) symbols::draw(*painter, layout.pin, QStringLiteral("pin.fill"), theme.accent);
  if (hasBadge) drawBadge(*painter, layout.badge, index.row() + 1, theme);
  painter->restore();
}

}  // namespace nimbrel
