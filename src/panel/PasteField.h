#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

namespace nimbrel {

/// Gives the pasteboard's text without waiting for its owner.
using PasteboardText = std::function<std::optional<QString>()>;

/// A line of text into which pasting waits for no other program, as Qt's own would: not by a key, by the
/// middle button or by a drop.
class PasteField : public QLineEdit {
 public:
  PasteField(PasteboardText pasteboardText, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void pasteText();

  PasteboardText pasteboardText_;
};

}  // namespace nimbrel
