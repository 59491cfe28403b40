#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;

namespace nimbrel {

class TextButton;

/// A quiet line over the end of the list that says what has happened, for some seconds: what can be undone,
/// or why something was not done. Moves nothing and takes no focus.
class NoticeBar final : public QWidget {
  Q_OBJECT

 public:
  explicit NoticeBar(QWidget* parent);

  /// Says something, with a button that does something about it unless its text is empty.
  void say(const QString& text, const QString& button = {});
  /// Ends what is being said.
  void dismiss();

 Q_SIGNALS:
  void activated();
  /// What was said is not to be seen any more, and its button cannot be pressed.
  void dismissed();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* label_;
  TextButton* button_;
  QTimer timer_;
};

}  // namespace nimbrel
