#include "platform/linux/XdgAutostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

#include "platform/AtomicFile.h"
#include "platform/linux/DesktopFile.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

QString fileIn(const QString& folder) {
  return QDir(folder).filePath(u"autostart/app.nimbrel.Nimbrel.desktop"_s);
}

QByteArray entryFor(const QString& program) {
  return "[Desktop Entry]\nType=Application\nName=Nimbrel\nComment=Historial del portapapeles\n"
         "Comment[en]=Clipboard history\nExec=" +
         execValue(program).toUtf8() +
         "\nIcon=app.nimbrel.Nimbrel\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
}

bool starts(const DesktopFile& file) {
  return !file.isTrue(u"Hidden"_s) && file.value(u"X-GNOME-Autostart-enabled"_s) != u"false";
}

}  // namespace

XdgAutostart::XdgAutostart(const QString& userFolder, const QStringList& systemFolders, QString program)
    : userFile_(fileIn(userFolder)), program_(std::move(program)) {
  for (const QString& folder : systemFolders) {
    if (fileIn(folder) != userFile_) systemFiles_.append(fileIn(folder));
  }
}

bool XdgAutostart::isEnabled() const {
  for (const QString& path : QStringList(userFile_) + systemFiles_) {
    if (const auto file = DesktopFile::read(path)) return starts(*file);
  }
  return false;
}

bool XdgAutostart::isSystemWide() const {
  return std::any_of(systemFiles_.begin(), systemFiles_.end(),
                     [](const QString& path) { return QFileInfo(path).isFile(); });
}

std::optional<QString> XdgAutostart::setEnabled(bool enabled) {
  QDir().mkpath(QFileInfo(userFile_).path());
  if (enabled) return replaceFile(userFile_, entryFor(program_));
  // Only a file of the user's own keeps one for everybody from working.
  if (isSystemWide())
    return replaceFile(userFile_, "[Desktop Entry]\nType=Application\nName=Nimbrel\nHidden=true\n");
  QFile file(userFile_);
  if (!QFileInfo(userFile_).exists() && !QFileInfo(userFile_).isSymLink()) return std::nullopt;
  return file.remove() ? std::nullopt : std::optional(file.errorString());
}

XdgAutostart sessionAutostart() {
  const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
  return {folders.value(0), folders.mid(1), QCoreApplication::applicationFilePath()};
}

}  // namespace nimbrel
