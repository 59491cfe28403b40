#pragma once

#include <QWidget>

namespace nimbrel {

/// The history panel's window: a rounded frame around its content, with a soft shadow where the desktop
/// blends windows. How it floats and takes the keyboard is the platform's affair.
class FloatingPanel final : public QWidget {
 public:
  static constexpr QSize kSize{480, 440};
  static constexpr QSize kMinimumSize{340, 440};
  static constexpr QSize kMaximumSize{640, 640};

  FloatingPanel();

  /// Puts the content into the frame; the panel takes it over.
  void setContent(QWidget* content);

  /// Whether the shadow is drawn and the corners are smooth.
  void setBlended(bool blended);

  /// The panel without its shadow.
  [[nodiscard]] QSize panelSize() const;
  void movePanel(const QPoint& topLeft);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] int shadowMargin() const;
  [[nodiscard]] QRect panelRect() const;
  void shape();

  bool blended_ = false;
};

}  // namespace nimbrel
