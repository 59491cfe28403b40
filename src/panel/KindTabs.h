#pragma once

#include <QTabBar>

#include "capture/model/ClipKind.h"

namespace nimbrel {

/// The kinds of clips as a segmented row: "Todo", "Texto", "Imágenes", "Archivos", "Fijados".
class KindTabs final : public QTabBar {
  Q_OBJECT

 public:
  explicit KindTabs(QWidget* parent);

  [[nodiscard]] ClipKind kind() const;
  /// The next kind, or the one before, round and round.
  void step(int direction);

 Q_SIGNALS:
  void kindChosen(nimbrel::ClipKind kind);

 protected:
  void paintEvent(QPaintEvent* event) override;
  [[nodiscard]] QSize tabSizeHint(int index) const override;
  [[nodiscard]] QSize minimumTabSizeHint(int index) const override;
  /// Choosing by the wheel would be choosing by accident.
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace nimbrel
