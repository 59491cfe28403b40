#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QScrollArea>
#include <QString>
#include <QVBoxLayout>

namespace nimbrel {

/// A page of the settings: sections with a heading, and rows on a card below it. Scrolls when the user's type
/// is too large for the window. Main thread.
class SettingsPage final : public QScrollArea {
  Q_OBJECT

 public:
  explicit SettingsPage(QWidget* parent = nullptr);

  /// Begins a section; one without a heading stands a little apart from the last.
  void addSection(const QString& heading);

  /// A row with a control at its end, which the label names, and a caption below when there is one.
  void addRow(const QString& label, QWidget* control, const QString& caption = {});

  /// A row that is a switch.
  [[nodiscard]] QCheckBox* addSwitch(const QString& label, const QString& caption = {});

  /// A row that is one widget.
  void addWide(QWidget* widget);

 private:
  void addBare(QWidget* widget);
  [[nodiscard]] QVBoxLayout* newRow();

  QVBoxLayout* column_;
  QVBoxLayout* card_ = nullptr;
};

/// The title of something, in a heavier weight.
[[nodiscard]] QLabel* headingLabel(const QString& text, QWidget* parent = nullptr);

/// Small secondary text that wraps.
[[nodiscard]] QLabel* captionLabel(const QString& text, QWidget* parent = nullptr);

}  // namespace nimbrel
