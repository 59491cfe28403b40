#pragma once

#include <QString>
#include <variant>

#include "intents/CollectionEntity.h"
#include "intents/IntentServices.h"

namespace nimbrel {

/// Pastes the most recent text of a collection that is no secret where the user is. Main thread.
class PasteFromCollectionIntent final {
 public:
  using Pasted = std::monostate;

  /// Without services, while the program starts, it fails.
  explicit PasteFromCollectionIntent(const IntentServices* services) : services_(services) {}

  [[nodiscard]] static QString title();
  [[nodiscard]] static QString parameterTitle();
  [[nodiscard]] static QString parameterDescription();
  /// What the intent does, in one line, with the collection.
  [[nodiscard]] static QString parameterSummary(const CollectionEntity& collection);

  void perform(const CollectionEntity& collection, const IntentDone<Pasted>& done) const;

 private:
  const IntentServices* services_;
};

}  // namespace nimbrel
