#include "storage/StorageDirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace nimbrel {
namespace {

constexpr QFile::Permissions kOwnerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

void makePrivateFolder(const QString& path) {
  QDir().mkpath(path);
  // What a link leads to is not ours to change.
  if (!QFileInfo(path).isSymLink()) QFile::setPermissions(path, kOwnerOnly);
}

}  // namespace

QString makeStorageDirectory(const QString& dataFolder) {
  const QString path = QDir(dataFolder).filePath(QStringLiteral("Nimbrel"));
  makePrivateFolder(path);
  makePrivateFolder(path + QStringLiteral("/Images"));
  makePrivateFolder(path + QStringLiteral("/Rich"));
  return path;
}

QString userDataFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString databasePath(const QString& storageDirectory) {
  return QDir(storageDirectory).filePath(QStringLiteral("brevin.sqlite"));
}

QString lockPath(const QString& storageDirectory) {
  return QDir(storageDirectory).filePath(QStringLiteral("nimbrel.lock"));
}

}  // namespace nimbrel
