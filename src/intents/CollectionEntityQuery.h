#pragma once

#include <QList>
#include <QStringList>

#include "intents/CollectionEntity.h"
#include "intents/IntentServices.h"

namespace nimbrel {

/// Finds the collections that there are. Main thread.
class CollectionEntityQuery final {
 public:
  /// Without services, while the program starts, there are none.
  explicit CollectionEntityQuery(const IntentServices* services) : services_(services) {}

  /// All of them, in the order of the user's language.
  [[nodiscard]] QList<CollectionEntity> suggestedEntities() const;

  /// Those with exactly these names, in the order in which they were asked for.
  [[nodiscard]] QList<CollectionEntity> entities(const QStringList& identifiers) const;

 private:
  const IntentServices* services_;
};

}  // namespace nimbrel
