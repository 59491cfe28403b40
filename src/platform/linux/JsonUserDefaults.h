#pragma once

#include <QJsonObject>

#include "platform/UserDefaults.h"

namespace nimbrel {

/// The user's values in one JSON file: texts, numbers and truth values as JSON has them, bytes as an object
/// with the single key "data" and their Base64 text. Written whole or not at all, for its owner alone (0600).
/// A file that cannot be read counts as empty and is left as it is.
class JsonUserDefaults final : public UserDefaults {
 public:
  explicit JsonUserDefaults(QString path);

  [[nodiscard]] std::optional<QByteArray> data(const QString& key) const override;
  [[nodiscard]] bool remove(const QString& key) override;

 private:
  /// Read at the first look, so that nobody waits for it before.
  [[nodiscard]] QJsonObject& values() const;
  [[nodiscard]] bool save() const;

  const QString path_;
  mutable std::optional<QJsonObject> values_;
};

/// The file for the program's values in the user's configuration folder.
[[nodiscard]] QString userDefaultsPath();

}  // namespace nimbrel
