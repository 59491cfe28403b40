#pragma once

#include <QGraphicsView>
#include <QStackedWidget>
#include <QWidget>
#include <functional>

#include "platform/linux/preview/PreviewContent.h"

class QLabel;
class QPlainTextEdit;

namespace nimbrel {

/// A picture that fits the window; the wheel zooms, dragging moves it, a double click fits it again.
class PictureView final : public QGraphicsView {
 public:
  explicit PictureView(QWidget* parent);

  void show(const QImage& image);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();
  void zoom(qreal factor);

  QGraphicsScene scene_;
  bool fitted_ = true;
};

/// The window of the preview. It never takes the keyboard.
class PreviewWindow final : public QWidget {
  Q_OBJECT

 public:
  PreviewWindow();

  void setContent(const PreviewContent& content);

  /// Shows the window where it hides the least of a part of the screen.
  void showBeside(const QRect& area);

 Q_SIGNALS:
  void closed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void showText(const PreviewText& text);
  void showFacts(const PreviewFacts& facts);

  QLabel* title_;
  QStackedWidget* pages_;
  QPlainTextEdit* text_;
  PictureView* picture_;
  QWidget* facts_;
  QLabel* icon_;
  QLabel* name_;
  QLabel* details_;
  QLabel* nothing_;
  QLabel* note_;
};

}  // namespace nimbrel
