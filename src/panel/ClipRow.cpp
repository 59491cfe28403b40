#include "panel/ClipRow.h"

#include <QPainter>
#include <QPainterPath>
#include <array>
#include <chrono>
#include <memory>

#include "capture/model/ClipSource.h"
#include "capture/model/TextRules.h"
#include "look/Symbols.h"

namespace nimbrel {
namespace {

/// More rows than any panel shows.
constexpr int kKeptContents = 64;

/// A colour of its own for each source, always the same, dark enough for white letters.
QColor tileColor(const ClipItem& clip) {
  const size_t hash = qHash(clip.sourceBundleID.value_or(QString()), 0);
  return kTileColors.at(hash % kTileColors.size());
}

QString symbolOf(const ClipItem& clip) {
  if (clip.isImage()) return QStringLiteral("photo");
  return clip.isFile() ? QStringLiteral("folder") : QStringLiteral("doc.on.clipboard");
}

/// The first letter of a name, with the marks on it.
QString initialOf(const QString& name) {
  return firstCharacters(trimmedWhitespace(name), 1).toString().toUpper();
}

void drawTile(QPainter& painter, const QRect& square, const ClipItem& clip) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(tileColor(clip));
  painter.drawRoundedRect(square, 7, 7);
  const QRect symbol = square.adjusted(6, 6, -6, -6);
  const bool remote = clip.sourceBundleID && isRemoteSourceID(*clip.sourceBundleID);
  if (remote) return symbols::draw(painter, symbol, QStringLiteral("iphone"), Qt::white);
  const QString initial = initialOf(clip.sourceName.value_or(QString()));
  if (initial.isEmpty()) return symbols::draw(painter, symbol, symbolOf(clip), Qt::white);
  painter.setPen(Qt::white);
  painter.setFont(panelFont(12, QFont::Bold));
  painter.drawText(square, Qt::AlignCenter, initial);
}

/// The part of a picture that fills an area; all of it when most would be cut off.
QRectF shownPart(const QSizeF& picture, const QSizeF& area) {
  constexpr qreal kLeastShare = 0.4;
  const QSizeF part = area.scaled(picture, Qt::KeepAspectRatio);
  if (part.width() * part.height() < kLeastShare * picture.width() * picture.height()) return {};
  return {QPointF((picture.width() - part.width()) / 2, (picture.height() - part.height()) / 2), part};
}

void drawPicture(QPainter& painter, const QRect& area, const QImage& picture, const PanelTheme& theme) {
  QPainterPath outline;
  outline.addRoundedRect(area, 6, 6);
  painter.save();
  painter.setClipPath(outline);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.fillPath(outline, Qt::white);
  const QRectF part = shownPart(picture.size(), area.size());
  if (!part.isNull()) {
    painter.drawImage(QRectF(area), picture, part);
  } else {
    // Never thinner than what can be seen.
    const QSize fitted = picture.size().scaled(area.size(), Qt::KeepAspectRatio).expandedTo({2, 2});
    QRect whole(QPoint(), fitted);
    whole.moveCenter(area.center());
    painter.drawImage(whole, picture);
  }
  painter.restore();
  painter.setPen(theme.border);
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
}

void drawDetails(QPainter& painter, QRect area, const QList<RowDetail>& details, const PanelTheme& theme) {
  constexpr int kSymbol = 11;
  constexpr int kGap = 8;
  /// Less of a text says nothing.
  constexpr int kLeastText = 24;
  for (const RowDetail& detail : details) {
    if (area.width() < (detail.text.isEmpty() ? kSymbol : kSymbol + kLeastText)) return;
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

void drawMarks(QPainter& painter, const QRect& area, const QStringList& marks, const PanelTheme& theme) {
  QRect square(area.topLeft(), QSize(kMarkSide, kMarkSide));
  for (const QString& mark : marks) {
    symbols::draw(painter, square, mark, theme.accent);
    square.translate(kMarkSide + kMarkGap, 0);
  }
}

void drawBackground(QPainter& painter, const QRect& area, QStyle::State state, const PanelTheme& theme) {
  const bool selected = state & QStyle::State_Selected;
  if (!selected && !(state & QStyle::State_MouseOver)) return;
  const bool focused = state & QStyle::State_HasFocus;
  painter.setPen(!selected ? QPen(Qt::NoPen) : focused ? QPen(theme.accent, 2) : QPen(theme.selectionBorder));
  painter.setBrush(selected ? theme.selection : theme.field);
  painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
}

QStringList marksOf(const ClipItem& clip, bool queued) {
  QStringList marks;
  if (queued) marks.append(QStringLiteral("list.bullet.circle.fill"));
  if (clip.pinned) marks.append(QStringLiteral("pin.fill"));
  return marks;
}

}  // namespace

ClipRow::ClipRow(const ClipListModel& model, ClipboardStore& store, const Clock& clock, InstalledIcons& icons,
                 QObject* parent)
    : QStyledItemDelegate(parent),
      model_(model),
      store_(store),
      clock_(clock),
      icons_(icons),
      contents_(kKeptContents) {
  connect(&store_, &ClipboardStore::clipsRemoved, this, [this](const auto&, const QList<ClipRef>& clips) {
    for (const ClipRef& clip : clips)
      contents_.remove(clip->clip.id);
  });
}

std::shared_ptr<const RowContent> ClipRow::contentOf(int row, int previewWidth,
                                                     const PanelTheme& theme) const {
  using std::chrono::floor;
  const RowContentKey key{.clip = model_.clipAt(row),
                          .secrecy = model_.secrecyOf(row),
                          .query = model_.query().text,
                          .minute = floor<std::chrono::minutes>(clock_.now()).time_since_epoch().count(),
                          .previewWidth = previewWidth,
                          .detailsWidth = previewWidth,
                          .theme = theme};
  const QUuid id = key.clip->clip.id;
  const auto* const kept = contents_.object(id);
  // The traits of a long text are there some time after its row.
  const bool hasTraits = key.clip->readyTraits() != nullptr;
  if (!hasTraits) store_.examiner().examine(key.clip);
  if (kept && (*kept)->key == key && (*kept)->hadTraits == hasTraits) return *kept;
  ++layoutsMade_;
  auto made = std::make_shared<const RowContent>(key);
  contents_.insert(id, new std::shared_ptr<const RowContent>(made));
  return made;
}

void ClipRow::forgetSecrets() {
  const auto ids = contents_.keys();
  for (const QUuid& id : ids) {
    const RowContentKey& key = (*contents_.object(id))->key;
    if (key.secrecy == Secrecy::revealed && key.clip->clip.imageFile)
      store_.thumbnails().remove(*key.clip->clip.imageFile);
    // What has turned out to be a secret since it was drawn is not drawn like that again.
    const auto row = store_.items().rowOf(id);
    const bool current = row && store_.items().at(*row) == key.clip;
    if (key.secrecy != Secrecy::none || !current) contents_.remove(id);
  }
}

void ClipRow::drawIcon(QPainter& painter, const QRect& area, const ClipItem& clip, Secrecy secrecy,
                       const PanelTheme& theme) const {
  const bool shows = clip.imageFile && secrecy != Secrecy::masked;
  const QImage picture = shows ? store_.thumbnails().thumbnail(*clip.imageFile) : QImage();
  if (!picture.isNull()) return drawPicture(painter, area, picture, theme);
  QRect tile(QPoint(), kRowIconSize);
  tile.moveCenter(area.center());
  const bool local = clip.sourceBundleID && !isRemoteSourceID(*clip.sourceBundleID);
  const QIcon icon = local ? icons_.icon(*clip.sourceBundleID, {}) : QIcon();
  if (icon.isNull()) return drawTile(painter, tile, clip);
  icon.paint(&painter, tile);
}

void ClipRow::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int row = index.row();
  const ClipItem& clip = model_.clipAt(row)->clip;
  const PanelTheme theme = panelTheme(option.palette);
  const QStringList marks = marksOf(clip, model_.isQueued(row));
  const bool hasBadge = row < ClipListModel::kDirectRows;
  const ClipRowLayout layout =
      layoutRow(option.rect.size(),
                {.picture = clip.isImage(), .badge = hasBadge, .marks = static_cast<int>(marks.size())});
  const auto kept = contentOf(row, layout.preview.width(), theme);
  const RowContent& content = *kept;
  painter->save();
  painter->translate(option.rect.topLeft());
  painter->setRenderHint(QPainter::Antialiasing);
  drawBackground(*painter, layout.background, option.state, theme);
  drawIcon(*painter, layout.icon, clip, model_.secrecyOf(row), theme);
  // Marks piled upon letters stay in their row.
  painter->setClipRect(layout.background);
  painter->setPen(theme.text);
  content.preview.draw(*painter, layout.preview);
  painter->setPen(theme.secondaryText);
  content.excerpt.draw(*painter, layout.details);
  const int used = content.excerpt.width() > 0 ? content.excerpt.width() + 8 : 0;
  drawDetails(*painter, layout.details.adjusted(used, 0, 0, 0), content.details, theme);
  drawMarks(*painter, layout.marks, marks, theme);
  if (hasBadge) drawBadge(*painter, layout.badge, row + 1, theme);
  painter->restore();
}

}  // namespace nimbrel
