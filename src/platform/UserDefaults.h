#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <variant>

namespace nimbrel {

/// A stored value of a type that the program never stores.
struct ForeignDefault final {
  bool operator==(const ForeignDefault&) const = default;
};

/// A stored value.
using DefaultsValue = std::variant<ForeignDefault, bool, qint64, QString, QByteArray>;

/// The user's stored values, by key, each with a type of its own. One thread at a time.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// The value under a key, nothing when there is no such key. The first look may *wait* for the disk.
  [[nodiscard]] virtual std::optional<DefaultsValue> value(const QString& key) const = 0;

  /// The bytes under a key; nothing when there is no such key or it holds another type.
  [[nodiscard]] std::optional<QByteArray> data(const QString& key) const {
    const auto stored = value(key);
    const auto* const bytes = stored ? std::get_if<QByteArray>(&*stored) : nullptr;
    return bytes ? std::optional(*bytes) : std::nullopt;
  }

  /// Sets a value, which lasts beyond the process only after `synchronize`.
  virtual void set(const QString& key, const DefaultsValue& value) = 0;

  /// Has all values stored; never waits. A failure is logged, and mended by the next call that succeeds.
  virtual void synchronize() = 0;

  /// Removes a key for good, *waiting* for the disk; an unknown one does nothing. False when it is still
  /// there after a restart.
  [[nodiscard]] virtual bool remove(const QString& key) = 0;

  /// False when what is stored holds something that could not be understood: then it is not to be replaced
  /// unless the user changes something.
  [[nodiscard]] virtual bool isIntact() const = 0;

  /// Says that a value could not be understood. What is stored now will be kept beside what replaces it.
  virtual void markDamaged() = 0;
};

}  // namespace nimbrel
