#include "intents/CollectionEntityQuery.h"

namespace nimbrel {

QList<CollectionEntity> CollectionEntityQuery::suggestedEntities() const {
  QList<CollectionEntity> found;
  if (!services_) return found;
  const QStringList names = services_->store.collections();
  for (const QString& name : names)
    found.append(CollectionEntity{name});
  return found;
}

QList<CollectionEntity> CollectionEntityQuery::entities(const QStringList& identifiers) const {
  const QList<CollectionEntity> all = suggestedEntities();
  QList<CollectionEntity> found;
  for (const QString& identifier : identifiers) {
    if (const CollectionEntity entity{identifier}; all.contains(entity)) found.append(entity);
  }
  return found;
}

}  // namespace nimbrel
