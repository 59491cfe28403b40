#pragma once

#include "panel/PanelSheet.h"

class QLineEdit;

namespace nimbrel {

/// Asks for the name of the collection that a clip is to be in.
class CollectionSheet final : public PanelSheet {
  Q_OBJECT

 public:
  /// The field holds `name` at first; `known` are the names that it completes.
  CollectionSheet(const QString& name, const QStringList& known, QWidget* parent);

 Q_SIGNALS:
  /// The clip is to be in this collection; a blank name means in none.
  void assigned(const QString& name);

 private:
  void assign();

  QLineEdit* field_;
};

}  // namespace nimbrel
