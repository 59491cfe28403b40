#pragma once

#include <QStringList>

#include "panel/PanelSheet.h"
#include "panel/PasteField.h"

namespace nimbrel {

/// Asks for the name of the collection that a clip is to be in, and offers those that there are.
class CollectionSheet final : public PanelSheet {
  Q_OBJECT

 public:
  /// The field holds `name` at first; `known` are the collections that there are.
  CollectionSheet(const QString& name, QStringList known, PasteboardText pasteboardText, QWidget* parent);

 Q_SIGNALS:
  /// The clip is to be in this collection; one that was typed and differs from a known one in letter case
  /// alone is that one. A blank name means in none.
  void assigned(const QString& name);

 private:
  void addSuggestions();
  /// Offers the collections whose names hold what has been typed.
  void suggest();
  /// Lets a button stand for a collection, no wider than there is room.
  static void offer(TextButton& button, const QString& name, int room);
  void assignTyped();
  void assign(const QString& name);

  QStringList known_;
  PasteField* field_;
  QWidget* suggestions_;
  /// What the buttons stand for, in their order.
  QStringList suggested_;
};

}  // namespace nimbrel
