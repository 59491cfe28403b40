#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace nimbrel {

/// The user's stored values, by key, each with a type of its own. One thread at a time.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// The bytes under a key; nothing when there is no such key or it holds another type.
  [[nodiscard]] virtual std::optional<QByteArray> data(const QString& key) const = 0;

  /// Removes a key for good; an unknown one does nothing. False when it is still there after a restart.
  [[nodiscard]] virtual bool remove(const QString& key) = 0;
};

}  // namespace nimbrel
