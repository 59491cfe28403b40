#pragma once

#include <QString>

namespace nimbrel {

/// A collection as the automation sees it: its name is what it is known by and what is shown of it.
struct CollectionEntity final {
  QString name;

  [[nodiscard]] const QString& id() const { return name; }
  [[nodiscard]] const QString& displayRepresentation() const { return name; }

  bool operator==(const CollectionEntity&) const = default;
};

}  // namespace nimbrel
