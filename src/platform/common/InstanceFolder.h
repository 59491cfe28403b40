#pragma once

#include <QString>
#include <utility>

namespace nimbrel {

/// The folder in which processes of one user find the running instance. Only that user may write in it, or
/// else a stranger could stand there in the instance's place. A value; any thread.
class InstanceFolder final {
 public:
  explicit InstanceFolder(QString path) : path_(std::move(path)) {}

  /// Makes the folder where there is none. Whether it can be used.
  [[nodiscard]] bool prepare() const;
  /// Whether the folder is there and nobody else's.
  [[nodiscard]] bool isOurs() const;

  /// Where the instance listens. The name is short: the whole path has room for about a hundred bytes.
  [[nodiscard]] QString socketPath() const { return path_ + QStringLiteral("/nimbrel"); }
  /// Who holds it is the instance.
  [[nodiscard]] QString lockPath() const { return path_ + QStringLiteral("/nimbrel.lock"); }

 private:
  QString path_;
};

}  // namespace nimbrel
