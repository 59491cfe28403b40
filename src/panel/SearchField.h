#pragma once

#include "panel/PasteField.h"

class QToolButton;

namespace nimbrel {

/// The panel's search field: a magnifying glass, the query, and a button that clears it.
class SearchField final : public PasteField {
 public:
  SearchField(PasteboardText pasteboardText, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void applyTheme();

  QToolButton* clear_;
};

}  // namespace nimbrel
