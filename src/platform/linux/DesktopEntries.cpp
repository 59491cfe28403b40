#include "platform/linux/DesktopEntries.h"

#include <QDirIterator>
#include <QHash>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <optional>

#include "platform/linux/DesktopFile.h"

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

// Programs that start others: their name tells nothing about the application.
constexpr std::array kStarters{
    QStringView(u"sh"),     QStringView(u"bash"),     QStringView(u"env"),      QStringView(u"python3"),
    QStringView(u"python"), QStringView(u"perl"),     QStringView(u"java"),     QStringView(u"node"),
    QStringView(u"wine"),   QStringView(u"mono"),     QStringView(u"electron"), QStringView(u"flatpak"),
    QStringView(u"snap"),   QStringView(u"pkexec"),   QStringView(u"sudo"),     QStringView(u"gtk-launch"),
    QStringView(u"dex"),    QStringView(u"xdg-open"),
};

bool isStarter(const QString& program) {
  return std::find(kStarters.begin(), kStarters.end(), QStringView(program)) != kStarters.end();
}

/// Whether the desktops in use (a list like "XFCE:GNOME") are among those that a file names.
bool names(const QString& list, const QStringList& desktops) {
  const QStringList named = list.split(u';', Qt::SkipEmptyParts);
  return std::any_of(desktops.begin(), desktops.end(),
                     [&](const QString& desktop) { return named.contains(desktop); });
}

bool isShownInMenus(const DesktopFile& file, const QStringList& desktops) {
  if (file.value(u"Type"_s) != u"Application" || file.isTrue(u"NoDisplay"_s)) return false;
  const QString only = file.value(u"OnlyShowIn"_s);
  return (only.isEmpty() || names(only, desktops)) && !names(file.value(u"NotShowIn"_s), desktops);
}

}  // namespace

/// What the files say, by lower-case keys.
struct DesktopEntries::Table {
  /// By id and by window class, as the files state them.
  QHash<QString, DesktopEntry> stated;
  /// By what applications that state no window class often take for one.
  QHash<QString, DesktopEntry> guessed;
  QSet<QString> ids;
  QList<InstalledApplication> shown;

  void add(const QString& id, const DesktopFile& file, const QStringList& desktops, const QString& language);
  void readFolder(const QString& folder);
};

void DesktopEntries::Table::add(const QString& id, const DesktopFile& file, const QStringList& desktops,
                                const QString& language) {
  const QString name = file.localValue(u"Name"_s, language);
  const DesktopEntry entry{ignoredIdentifier(id).value_or(id), name.isEmpty() ? id : name};
  stated.insert(id.toLower(), entry);
  const QString windowClass = file.value(u"StartupWMClass"_s).toLower();
  if (!windowClass.isEmpty() && !stated.contains(windowClass)) stated.insert(windowClass, entry);
  if (!isShownInMenus(file, desktops)) return;
  shown.append(
      {.identifier = entry.identifier, .name = entry.name, .icon = file.localValue(u"Icon"_s, language)});
  const QString program = programOf(file.value(u"Exec"_s)).toLower();
  for (const QString& key : {id.section(u'.', -1).toLower(), isStarter(program) ? QString() : program})
    if (!key.isEmpty() && !guessed.contains(key)) guessed.insert(key, entry);
}

void DesktopEntries::Table::readFolder(const QString& folder) {
  const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
  const QString language = QLocale::system().name();
  QDirIterator files(folder, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    // Sub-folders become part of the id, joined with hyphens.
    const QString id = path.mid(folder.size() + 1).chopped(8).replace(u'/', u'-');
    if (ids.contains(id.toLower())) continue;
    const auto file = DesktopFile::read(path);
    if (!file) continue;
    // One that is called deleted hides those of the same name in less important folders.
    ids.insert(id.toLower());
    if (!file->isTrue(u"Hidden"_s)) add(id, *file, desktops, language);
  }
}

QStringList DesktopEntries::userFolders() {
  return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

std::shared_ptr<const DesktopEntries::Table> DesktopEntries::table() const {
  const std::lock_guard lock(mutex_);
  return table_;
}

DesktopEntry DesktopEntries::find(const QString& applicationId, const QString& windowClass) const {
  const auto table = this->table();
  for (const QString& key : {applicationId, windowClass}) {
    if (const auto known = ignoredIdentifier(key))
      return {*known, table ? table->stated.value(key.toLower(), {QString(), key}).name : key};
  }
  if (table) {
    for (const auto* const entries : {&table->stated, &table->guessed}) {
      for (const QString& key : {applicationId, windowClass}) {
        const auto found = entries->constFind(key.toLower());
        if (!key.isEmpty() && found != entries->constEnd()) return *found;
      }
    }
  }
  const QString fallback = applicationId.isEmpty() ? windowClass : applicationId;
  return {fallback, windowClass.isEmpty() ? fallback : windowClass};
}

void DesktopEntries::load() {
  auto read = std::make_shared<Table>();
  for (const QString& folder : folders_)
    read->readFolder(folder);
  const std::lock_guard lock(mutex_);
  table_ = std::move(read);
}

QList<InstalledApplication> DesktopEntries::shown() const {
  const auto table = this->table();
  return table ? table->shown : QList<InstalledApplication>();
}

}  // namespace nimbrel
