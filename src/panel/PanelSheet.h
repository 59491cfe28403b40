#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;

namespace nimbrel {

class TextButton;

/// A question over the panel, which it dims: a title, what else is needed, and two buttons. Keeps the
/// keyboard until it is answered; Escape is the answer "no". Goes away by itself afterwards.
class PanelSheet : public QWidget {
  Q_OBJECT

 public:
  PanelSheet(const QString& title, QWidget* parent);

  /// Covers the parent and takes the keyboard.
  void open();
  /// Answers "no".
  void cancel();

 Q_SIGNALS:
  /// The sheet is gone, whatever the answer was.
  void closed();

 protected:
  /// How wide what is between the title and the buttons is.
  static constexpr int kContentWidth = 268;

  /// Puts something between the title and the buttons.
  void addContent(QWidget* content);
  QLabel* addNote(const QString& text);
  /// The buttons, in their order; the second does what the sheet is about.
  void addButtons(const QString& no, TextButton* yes);
  /// What has the keyboard first.
  void setFirstFocus(QWidget* widget) { firstFocus_ = widget; }
  void close();

  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  /// A click beside the question answers nothing and reaches nothing.
  void mousePressEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  QWidget* card_;
  QVBoxLayout* column_;
  QWidget* firstFocus_ = nullptr;
};

}  // namespace nimbrel
