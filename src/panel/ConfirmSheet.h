#pragma once

#include "panel/PanelSheet.h"

namespace nimbrel {

/// Asks before something that cannot be undone.
class ConfirmSheet final : public PanelSheet {
  Q_OBJECT

 public:
  /// `yes` is the button that does it; "Cancelar" has the keyboard first.
  ConfirmSheet(const QString& title, const QString& note, const QString& yes, QWidget* parent);

  /// Says something else, of the same length or shorter.
  void setNote(const QString& note);

 Q_SIGNALS:
  void confirmed();

 private:
  QLabel* note_;
};

}  // namespace nimbrel
