#pragma once

#include <QWidget>

class QLabel;

namespace nimbrel {

/// A line that says what is the matter, with a symbol and, where something can be done about it, a button.
class Banner final : public QWidget {
  Q_OBJECT

 public:
  enum class Tone { notice, alarm };

  /// Without a button when its text is empty.
  Banner(const QString& name, const QString& symbol, const QString& text, const QString& button, Tone tone,
         QWidget* parent);

 Q_SIGNALS:
  void activated();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void applyTheme();

  QString symbol_;
  Tone tone_;
  QLabel* label_;
};

}  // namespace nimbrel
