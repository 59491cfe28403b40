#pragma once

#include <QToolButton>

namespace nimbrel {

/// A flat button that is a symbol; its label is its tool tip and its accessible name. Reached by Tab, never
/// by a click, which leaves the keyboard where it is.
class SymbolButton final : public QToolButton {
  Q_OBJECT

 public:
  SymbolButton(const QString& symbol, const QString& label, QWidget* parent, int side = 30);

  void setSymbol(const QString& symbol);
  [[nodiscard]] const QString& symbol() const { return symbol_; }
  void setLabel(const QString& label);
  /// Drawn in the accent colour on a tinted surface.
  void setActive(bool active);
  [[nodiscard]] bool isActive() const { return active_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
  bool active_ = false;
};

}  // namespace nimbrel
