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

  /// How high it must be for what it says.
  [[nodiscard]] int heightForWidth(int width) const override;

 Q_SIGNALS:
  void activated();
  /// Something is to be seen, which may need another height.
  void said();
  /// What was said is not to be seen any more, and its button cannot be pressed.
  void dismissed();
  /// The button has gone that had the keyboard.
  void keyboardReleased();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void setButton(const QString& text);

  QLabel* label_;
  TextButton* button_;
  QTimer timer_;
};

}  // namespace nimbrel
