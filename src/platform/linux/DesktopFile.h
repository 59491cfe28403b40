#pragma once

#include <QHash>
#include <QString>
#include <optional>

namespace nimbrel {

/// The main group of a desktop file (freedesktop.org, desktop entries 1.5).
class DesktopFile final {
 public:
  /// Reads a file, or its beginning when it is larger than any desktop file; nothing when it cannot be read
  /// or has no main group. *Waits* for the disk, but for no pipe or device.
  [[nodiscard]] static std::optional<DesktopFile> read(const QString& path);

  /// The same for the bytes of a file.
  [[nodiscard]] static std::optional<DesktopFile> parse(const QByteArray& bytes);

  /// A value without its escapes; empty when the key is not there.
  [[nodiscard]] QString value(const QString& key) const;

  /// A value in a language ("es_ES" or "es"), else in no particular one.
  [[nodiscard]] QString localValue(const QString& key, const QString& language) const;

  /// Whether a value is "true".
  [[nodiscard]] bool isTrue(const QString& key) const { return value(key) == QStringLiteral("true"); }

 private:
  QHash<QString, QString> values_;
};

/// A program's path as the value of the key Exec: quoted, with every character escaped that has a meaning
/// there.
[[nodiscard]] QString execValue(const QString& program);

/// The file name, without folder, of the program that a value of the key Exec starts; empty when there is
/// none.
[[nodiscard]] QString programOf(const QString& exec);

}  // namespace nimbrel
