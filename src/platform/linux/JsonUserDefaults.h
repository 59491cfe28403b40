#pragma once

#include <QJsonObject>
#include <QThreadPool>
#include <atomic>

#include "platform/UserDefaults.h"

namespace nimbrel {

/// The user's values in one JSON file: texts, whole numbers and truth values as JSON has them, bytes as an
/// object with the single key "data" and their Base64 text. Written whole or not at all, for its owner alone
/// (0600), on a thread of its own. What stands at its place and is no such file counts as empty and is kept
/// under another name when the file is written. A symbolic link stays one.
class JsonUserDefaults final : public UserDefaults {
 public:
  explicit JsonUserDefaults(const QString& path);
  /// Waits until everything is written.
  ~JsonUserDefaults() override;

  [[nodiscard]] std::optional<DefaultsValue> value(const QString& key) const override;
  void set(const QString& key, const DefaultsValue& value) override;
  void synchronize() override;
  [[nodiscard]] bool remove(const QString& key) override;
  [[nodiscard]] bool isIntact() const override;
  void markDamaged() override;

  /// When a file was written last, in milliseconds since 1970, and its size; zeros for none.
  struct Stamp {
    qint64 modified = 0;
    qint64 size = 0;
    bool operator==(const Stamp&) const = default;
  };

 private:
  /// Read at the first look, so that nobody waits for it before.
  [[nodiscard]] QJsonObject& values() const;
  void write(const QJsonObject& values);

  /// Behind all links.
  const QString path_;
  mutable std::optional<QJsonObject> values_;
  /// The file as it was last read or written here.
  mutable Stamp seen_;
  /// What stands there now must not be lost.
  mutable std::atomic<bool> damaged_ = false;
  /// One thread, so that the last values are written last.
  QThreadPool writer_;
};

/// The file for the program's values in the user's configuration folder.
[[nodiscard]] QString userDefaultsPath();

}  // namespace nimbrel
