#pragma once

#include <QComboBox>
#include <QString>
#include <QtGlobal>

namespace nimbrel {

/// A list from which one value is chosen. It changes only by a choice in its opened list: neither the wheel
/// nor a stray key on the way through a form may throw clips away. Main thread.
class Picker final : public QComboBox {
  Q_OBJECT

 public:
  explicit Picker(QWidget* parent = nullptr);

  void addChoice(qint64 value, const QString& text);

  /// Shows a value; one that is no choice is shown under `otherText` as long as it is chosen.
  void setChoice(qint64 value, const QString& otherText);

  [[nodiscard]] qint64 choice() const { return currentData().toLongLong(); }

 Q_SIGNALS:
  /// The user has chosen a value.
  void chosen(qint64 value);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  int choices_ = 0;
};

/// A count as the localisation takes it; one that is larger than that is as many as it can say.
[[nodiscard]] int grammaticalNumber(qint64 count);

}  // namespace nimbrel
