#pragma once

#include <QTimer>
#include <QWidget>
#include <chrono>

class QLabel;

namespace nimbrel {

class TextButton;

/// A quiet line over the end of the list that says what has happened, for some seconds: what can be undone,
/// or why something was not done. Moves nothing and takes no focus.
class NoticeBar final : public QWidget {
  Q_OBJECT

 public:
  /// Long enough to be read and acted upon.
  static constexpr std::chrono::milliseconds kPatience{6000};

  /// What is said is to be seen for so long.
  explicit NoticeBar(QWidget* parent, std::chrono::milliseconds patience = kPatience);

  /// Says something, with a button that does something about it unless its text is empty.
  void say(const QString& text, const QString& button = {});
  /// Ends what is being said.
  void dismiss();

 Q_SIGNALS:
  void activated();
  /// What was said is not to be seen any more, and its button, where the keyboard may have been, cannot be
  /// pressed.
  void dismissed(bool hadKeyboard);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* label_;
  TextButton* button_;
  QTimer timer_;
};

}  // namespace nimbrel
