#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

class QToolButton;

namespace nimbrel {

/// The panel's search field: a magnifying glass, the query, and a button that clears it.
class SearchField final : public QLineEdit {
 public:
  /// Gives the pasteboard's text without waiting for its owner.
  using PasteboardText = std::function<std::optional<QString>()>;

  SearchField(PasteboardText pasteboardText, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  /// Qt's own pasting waits for the program that owns the selection; these keep it from happening.
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void applyTheme();

  void pasteText();

  PasteboardText pasteboardText_;
  QToolButton* clear_;
};

}  // namespace nimbrel
