#include "panel/RowContent.h"

#include <QFontMetrics>

#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

constexpr int kPreviewSize = 13;
constexpr int kDetailSize = 11;

/// The end of a path tells more than its middle.
Qt::TextElideMode elideModeOf(const ClipItem& clip) {
  return clip.isFile() && !clip.text.contains(u'\n') ? Qt::ElideMiddle : Qt::ElideRight;
}

QString hiddenMatch(const ClipItem& clip, const QList<QByteArray>& terms) {
  const QString inText = excerptOf(clip.text, terms);
  return inText.isEmpty() && clip.ocrText ? excerptOf(*clip.ocrText, terms) : inText;
}

}  // namespace

FittingLine::FittingLine(const QString& text, const QFont& font, int width, Qt::TextElideMode mode,
                         const QList<QByteArray>& terms, const QColor& emphasis) {
  const QFontMetrics metrics(font);
  layOut(metrics.elidedText(text, mode, width), font, terms, emphasis);
  // Emphasis makes letters wider.
  if (width_ > width) layOut(metrics.elidedText(text, mode, 2 * width - width_), font, terms, emphasis);
}

void FittingLine::layOut(const QString& text, const QFont& font, const QList<QByteArray>& terms,
                         const QColor& emphasis) {
  layout_ = std::make_shared<QTextLayout>(text, font);
  QTextCharFormat format;
  format.setForeground(emphasis);
  format.setFontWeight(QFont::DemiBold);
  QList<QTextLayout::FormatRange> formats;
  if (!terms.isEmpty()) {
    for (const TextRange& match : matchRanges(text, terms))
      formats.append({static_cast<int>(match.start), static_cast<int>(match.length), format});
  }
  showsMatch_ = !formats.isEmpty();
  layout_->setFormats(formats);
  layout_->setCacheEnabled(true);
  layout_->beginLayout();
  QTextLine line = layout_->createLine();
  if (line.isValid()) line.setNumColumns(static_cast<int>(text.size()));
  layout_->endLayout();
  width_ = line.isValid() ? qCeil(line.naturalTextWidth()) : 0;
}

void FittingLine::draw(QPainter& painter, const QRect& area) const {
  if (!layout_) return;
  const qreal top = area.top() + (area.height() - layout_->boundingRect().height()) / 2;
  layout_->draw(&painter, QPointF(area.left(), top));
}

RowContent::RowContent(const RowContentKey& madeFor)
    : key(madeFor), hadTraits(madeFor.clip->readyTraits() != nullptr) {
  const ClipItem& clip = key.clip->clip;
  const bool mayMatch = key.secrecy == Secrecy::none && !key.query.isEmpty();
  const QList<QByteArray> terms = mayMatch ? searchTerms(foldedText(key.query)) : QList<QByteArray>();
  preview = FittingLine(previewText(clip, key.secrecy), panelFont(kPreviewSize), key.previewWidth,
                        elideModeOf(clip), terms, key.theme.accent);
  if (!terms.isEmpty() && !preview.showsMatch()) {
    const QString found = hiddenMatch(clip, terms);
    if (!found.isEmpty())
      excerpt = FittingLine(found, panelFont(kDetailSize), key.detailsWidth, Qt::ElideRight, terms,
                            key.theme.accent);
  }
  const QDateTime now = QDateTime::fromSecsSinceEpoch(key.minute * 60);
  details = rowDetails(*key.clip, key.secrecy, now, QLocale());
}

}  // namespace nimbrel
