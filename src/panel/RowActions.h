#pragma once

#include <QUuid>
#include <QWidget>

#include "panel/ClipActions.h"
#include "panel/ClipListView.h"

namespace nimbrel {

class SymbolButton;

/// The buttons of the row under the pointer, or of the selected row while the list has the keyboard: unlock,
/// paste, queue, pin, delete.
class RowActions final : public QWidget {
  Q_OBJECT

 public:
  /// All must outlive this.
  RowActions(ClipListView& list, ClipListModel& model, ClipActions& actions);

  /// Stands where it belongs by now, and shows what applies to the clip there.
  void refresh();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  using Action = std::function<void(const ClipItem&)>;

  SymbolButton* makeButton(const QString& name, const QString& symbol, const QString& label, Action action);
  [[nodiscard]] QModelIndex row() const;
  [[nodiscard]] bool hasFocusInside() const;
  void describe(const QModelIndex& index);

  ClipListView& list_;
  ClipListModel& model_;
  ClipActions& actions_;
  SymbolButton* unlock_;
  SymbolButton* paste_;
  SymbolButton* queue_;
  SymbolButton* pin_;
  SymbolButton* remove_;
  /// The clip whose buttons these are.
  ClipRef clip_;
  /// The clip whose button is being pressed.
  QUuid pressed_;
  bool selected_ = false;
};

}  // namespace nimbrel
