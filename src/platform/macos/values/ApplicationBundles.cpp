#include "platform/macos/values/ApplicationBundles.h"

#include <QDir>
#include <QFileInfo>

namespace nimbrel::macos {
namespace {

bool isBundle(const QFileInfo& entry) {
  return entry.suffix().compare(QLatin1String("app"), Qt::CaseInsensitive) == 0;
}

void collect(const QString& folder, int levels, QStringList& found) {
  const auto entries = QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
  for (const QFileInfo& entry : entries) {
    if (isBundle(entry))
      found.append(entry.filePath());
    else if (levels > 0)
      collect(entry.filePath(), levels - 1, found);
  }
}

}  // namespace

QStringList applicationBundles(const QStringList& folders) {
  QStringList found;
  for (const QString& folder : folders)
    collect(folder, 1, found);
  found.removeDuplicates();
  return found;
}

QStringList applicationFolders() {
  return {QStringLiteral("/Applications"), QStringLiteral("/System/Applications"),
          QStringLiteral("/System/Library/CoreServices/Applications"),
          QDir::home().filePath(QStringLiteral("Applications"))};
}

}  // namespace nimbrel::macos
