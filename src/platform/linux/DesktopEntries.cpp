#include "platform/linux/DesktopEntries.h"

#include <QDirIterator>
#include <QFile>
#include <QLocale>
#include <QStandardPaths>
#include <array>
#include <optional>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

struct KnownManager {
  QStringView id;
  QStringView ignoredAs;
};

// Lower-case desktop-file ids and window classes of password managers, as their Linux packages name them.
constexpr std::array kKnownManagers{
    KnownManager{u"1password", u"com.1password.1password"},
    KnownManager{u"com.onepassword.onepassword", u"com.1password.1password"},
    KnownManager{u"bitwarden", u"com.bitwarden.desktop"},
    KnownManager{u"com.bitwarden.desktop", u"com.bitwarden.desktop"},
    KnownManager{u"org.keepassxc.keepassxc", u"org.keepassxc.keepassxc"},
    KnownManager{u"keepassxc", u"org.keepassxc.keepassxc"},
    KnownManager{u"enpass", u"com.enpass.Enpass"},
    KnownManager{u"authy", u"com.authy"},
    KnownManager{u"authy desktop", u"com.authy"},
    KnownManager{u"dashlane", u"com.dashlane.Dashlane"},
    KnownManager{u"lastpass", u"com.lastpass.LastPass"},
    KnownManager{u"seahorse", u"com.apple.keychainaccess"},
    KnownManager{u"org.gnome.seahorse.application", u"com.apple.keychainaccess"},
    KnownManager{u"org.gnome.world.secrets", u"com.apple.Passwords"},
};

std::optional<QString> ignoredIdentifier(const QString& id) {
  const QString lower = id.toLower();
  for (const auto& manager : kKnownManagers) {
    if (manager.id == lower) return manager.ignoredAs.toString();
  }
  return std::nullopt;
}

struct ParsedFile {
  QString name;
  QString windowClass;
};

/// Reads the two keys of the main group; a desktop file is small, and one that is not is not read to its end.
ParsedFile parse(const QString& path) {
  constexpr qint64 kMaxBytes = 64 * 1024;
  ParsedFile parsed;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return parsed;
  const QString localKey = u"Name["_s + QLocale::system().name().section(u'_', 0, 0) + u"]="_s;
  bool inMainGroup = false;
  bool nameIsLocal = false;
  for (const QByteArray& raw : file.read(kMaxBytes).split('\n')) {
    if (raw.startsWith('[')) {
      if (inMainGroup) break;
      inMainGroup = raw.trimmed() == "[Desktop Entry]";
      continue;
    }
    if (!inMainGroup) continue;
    const QString line = QString::fromUtf8(raw.trimmed());
    if (line.startsWith(u"Name=") && !nameIsLocal) parsed.name = line.mid(5);
    if (line.startsWith(localKey)) {
      parsed.name = line.mid(localKey.size());
      nameIsLocal = true;
    }
    if (line.startsWith(u"StartupWMClass=")) parsed.windowClass = line.mid(15);
  }
  return parsed;
}

}  // namespace

QStringList DesktopEntries::userFolders() {
  return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

DesktopEntry DesktopEntries::find(const QString& applicationId, const QString& windowClass) {
  const bool loaded = loaded_;
  for (const QString& key : {applicationId, windowClass}) {
    if (const auto known = ignoredIdentifier(key))
      return {*known, loaded ? entries_.value(key.toLower(), {QString(), key}).name : key};
  }
  for (const QString& key : {applicationId, windowClass}) {
    if (!loaded || key.isEmpty()) continue;
    const auto found = entries_.constFind(key.toLower());
    if (found != entries_.constEnd()) return *found;
  }
  const QString fallback = applicationId.isEmpty() ? windowClass : applicationId;
  return {fallback, windowClass.isEmpty() ? fallback : windowClass};
}

void DesktopEntries::load() {
  std::call_once(once_, [this] {
    for (const QString& folder : folders_)
      readFolder(folder);
    loaded_ = true;
  });
}

void DesktopEntries::readFolder(const QString& folder) {
  QDirIterator files(folder, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    // Sub-folders become part of the id, joined with hyphens.
    const QString id = path.mid(folder.size() + 1).chopped(8).replace(u'/', u'-');
    if (entries_.contains(id.toLower())) continue;
    const ParsedFile parsed = parse(path);
    const DesktopEntry entry{ignoredIdentifier(id).value_or(id), parsed.name.isEmpty() ? id : parsed.name};
    entries_.insert(id.toLower(), entry);
    const QString windowClass = parsed.windowClass.toLower();
    if (!windowClass.isEmpty() && !entries_.contains(windowClass)) entries_.insert(windowClass, entry);
  }
}

}  // namespace nimbrel
