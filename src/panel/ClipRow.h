#pragma once

#include <QCache>
#include <QStyledItemDelegate>
#include <memory>

#include "look/icons/InstalledIcons.h"
#include "panel/ClipListModel.h"
#include "panel/ClipRowLayout.h"
#include "panel/RowContent.h"
#include "platform/Clock.h"

namespace nimbrel {

/// Draws one clip of the list: the icon of its source, or a tile for it, or its picture, a line of preview,
/// small labels, its marks and its badge. Reads memory only; a picture that is not there yet is asked for and
/// drawn when it has come.
class ClipRow final : public QStyledItemDelegate {
 public:
  /// Model, store, clock and icons must outlive this.
  ClipRow(const ClipListModel& model, ClipboardStore& store, const Clock& clock, InstalledIcons& icons,
          QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  /// Keeps nothing of what the masks hide.
  void forgetSecrets();

  /// How many texts have been laid out so far, for measuring.
  [[nodiscard]] qsizetype layoutsMade() const { return layoutsMade_; }

 private:
  void drawIcon(QPainter& painter, const QRect& area, const ClipItem& clip, Secrecy secrecy,
                const PanelTheme& theme) const;
  [[nodiscard]] std::shared_ptr<const RowContent> contentOf(int row, int previewWidth,
                                                            const PanelTheme& theme) const;

  const ClipListModel& model_;
  ClipboardStore& store_;
  const Clock& clock_;
  InstalledIcons& icons_;
  /// What is drawn of the clips that were drawn last, by id.
  mutable QCache<QUuid, std::shared_ptr<const RowContent>> contents_;
  mutable qsizetype layoutsMade_ = 0;
};

}  // namespace nimbrel
