#pragma once

#include <QByteArray>
#include <QList>
#include <QPainter>
#include <QTextLayout>
#include <memory>

#include "panel/ClipRowText.h"
#include "panel/MatchText.h"
#include "panel/PanelTheme.h"

namespace nimbrel {

/// A line of text that fits a width, with the matches of a search emphasised; laid out once.
class FittingLine final {
 public:
  FittingLine() = default;
  /// `terms` are folded; `mode` says where what does not fit is left out.
  FittingLine(const QString& text, const QFont& font, int width, Qt::TextElideMode mode,
              const QList<QByteArray>& terms, const QColor& emphasis);

  /// Draws it in the painter's pen, in the middle of the area's height.
  void draw(QPainter& painter, const QRect& area) const;

  [[nodiscard]] int width() const { return width_; }
  /// Whether a match can be seen.
  [[nodiscard]] bool showsMatch() const { return showsMatch_; }

 private:
  void layOut(const QString& text, const QFont& font, const QList<QByteArray>& terms, const QColor& emphasis);

  std::shared_ptr<QTextLayout> layout_;
  int width_ = 0;
  bool showsMatch_ = false;
};

/// What everything that a row shows depends on.
struct RowContentKey final {
  ClipRef clip;
  Secrecy secrecy = Secrecy::none;
  QString query;
  /// The day and minute, by which dates are told.
  qint64 minute = 0;
  int previewWidth = 0;
  int detailsWidth = 0;
  PanelTheme theme;

  bool operator==(const RowContentKey&) const = default;
};

/// What a row shows, laid out.
struct RowContent final {
  explicit RowContent(const RowContentKey& madeFor);

  RowContentKey key;
  /// Whether it was known what takes a look at the whole text.
  bool hadTraits = false;
  FittingLine preview;
  /// The surroundings of a match that the preview does not show; without width when there is none.
  FittingLine excerpt;
  QList<RowDetail> details;
};

}  // namespace nimbrel
