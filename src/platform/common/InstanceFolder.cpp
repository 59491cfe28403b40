#include "platform/common/InstanceFolder.h"

#include <unistd.h>

#include <QDir>
#include <QFileInfo>

namespace nimbrel {

bool InstanceFolder::prepare() const {
  if (!QDir::isAbsolutePath(path_)) return false;
  // Where there is one already, this does nothing.
  static_cast<void>(QDir().mkdir(path_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  return isOurs();
}

bool InstanceFolder::isOurs() const {
  const QFileInfo folder(path_);
  return folder.isAbsolute() && folder.isDir() && folder.ownerId() == ::geteuid() &&
         !(folder.permissions() & (QFile::WriteGroup | QFile::WriteOther));
}

}  // namespace nimbrel
