#pragma once

#include <QWidget>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The commands that fit the selected clip, in one of four fixed texts; the last one without a selection.
[[nodiscard]] QString hintFor(const ClipItem* selected);

/// The line of hints at the foot of the panel: its type shrinks from 11 to 9.5 points before the text is
/// elided.
class HintLine final : public QWidget {
 public:
  explicit HintLine(QWidget* parent);

  void setText(const QString& text);
  [[nodiscard]] const QString& text() const { return text_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
};

}  // namespace nimbrel
