#pragma once

#include <QPushButton>

namespace nimbrel {

/// A small button with a text, in the colours of what it stands on.
class TextButton final : public QPushButton {
  Q_OBJECT

 public:
  enum class Tone { plain, accent, danger, notice, alarm };

  TextButton(const QString& text, Tone tone, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Tone tone_;
};

}  // namespace nimbrel
