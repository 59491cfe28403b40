#pragma once

#include <QSaveFile>
#include <QString>
#include <optional>

namespace nimbrel {

/// Puts bytes into a file, all of them or none, for its owner alone (0600). Nothing when it is done, else
/// what went wrong, and then what was there before still is. *Waits* for the disk; any thread.
[[nodiscard]] inline std::optional<QString> replaceFile(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return file.errorString();
  // Before there is anything to read in it.
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  // What is only buffered when the file takes its place may find the disk full, and nobody would hear of it.
  const bool complete = file.write(bytes) == bytes.size() && file.flush();
  if (complete && file.commit()) return std::nullopt;
  return file.errorString();
}

}  // namespace nimbrel
