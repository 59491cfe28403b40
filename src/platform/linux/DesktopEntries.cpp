#include "platform/linux/DesktopEntries.h"

#include <QDirIterator>
#include <QHash>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

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
  QHash<QString, DesktopEntry> byId;
  /// By the window class that a file states; one that menus show goes before one that they do not.
  QHash<QString, DesktopEntry> byClass;
  QSet<QString> shownClasses;
  /// By what applications that state no window class often take for one; none for what several might be.
  QHash<QString, std::optional<DesktopEntry>> guessed;
  QSet<QString> ids;
  struct Shown {
    InstalledApplication application;
    QString windowClass;
  };
  QList<Shown> shown;

  void add(const QString& id, const DesktopFile& file, bool isShown);
  void addClass(const QString& windowClass, const DesktopEntry& entry, bool isShown);
  void guess(const QString& key, const DesktopEntry& entry);
  void readFolder(const QString& folder);
};

void DesktopEntries::Table::addClass(const QString& windowClass, const DesktopEntry& entry, bool isShown) {
  if (windowClass.isEmpty() || shownClasses.contains(windowClass)) return;
  if (!isShown && byClass.contains(windowClass)) return;
  byClass.insert(windowClass, entry);
  if (isShown) shownClasses.insert(windowClass);
}

void DesktopEntries::Table::guess(const QString& key, const DesktopEntry& entry) {
  if (key.isEmpty()) return;
  const auto known = guessed.constFind(key);
  const bool isAmbiguous = known != guessed.constEnd() && *known != entry;
  guessed.insert(key, isAmbiguous ? std::nullopt : std::optional(entry));
}

void DesktopEntries::Table::add(const QString& id, const DesktopFile& file, bool isShown) {
  const QString language = QLocale::system().uiLanguages().value(0).replace(u'-', u'_');
  const QString name = file.localValue(u"Name"_s, language);
  const DesktopEntry entry{ignoredIdentifier(id).value_or(id), name.isEmpty() ? id : name};
  const QString windowClass = file.value(u"StartupWMClass"_s).toLower();
  byId.insert(id.toLower(), entry);
  addClass(windowClass, entry, isShown);
  if (!isShown) return;
  shown.append(
      {{.identifier = entry.identifier, .name = entry.name, .icon = file.localValue(u"Icon"_s, language)},
       windowClass});
  if (!windowClass.isEmpty() || file.isTrue(u"Terminal"_s)) return;
  const QString program = programOf(file.value(u"Exec"_s)).toLower();
  guess(id.section(u'.', -1).toLower(), entry);
  if (!isStarter(program)) guess(program, entry);
}

void DesktopEntries::Table::readFolder(const QString& folder) {
  const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
  QStringList paths;
  QDirIterator files(folder, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext())
    paths.append(files.next());
  // Which of two files wins must not depend on how the disk happens to hold them.
  paths.sort();
  for (const QString& path : std::as_const(paths)) {
    // Sub-folders become part of the id, joined with hyphens.
    const QString id = path.mid(folder.size() + 1).chopped(8).replace(u'/', u'-');
    if (ids.contains(id.toLower())) continue;
    const auto file = DesktopFile::read(path);
    if (!file) continue;
    // One that is called deleted hides those of the same name in less important folders.
    ids.insert(id.toLower());
    if (!file->isTrue(u"Hidden"_s)) add(id, *file, isShownInMenus(*file, desktops));
  }
}

QStringList DesktopEntries::userFolders() {
  return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

std::shared_ptr<const DesktopEntries::Table> DesktopEntries::table() const {
  const std::lock_guard lock(mutex_);
  return table_;
}

DesktopEntry DesktopEntries::find(const QString& applicationId, const WindowClass& window) const {
  const auto table = this->table();
  const QString id = applicationId.toLower();
  const QString instance = window.instance.toLower();
  const QString className = window.className.toLower();
  for (const QString& key : {applicationId, window.className}) {
    if (const auto known = ignoredIdentifier(key))
      return {*known, table ? table->byId.value(key.toLower(), {QString(), key}).name : key};
  }
  if (table) {
    // A window of a browser that is an application of its own differs in its instance only.
    for (const auto& [entries, key] :
         {std::pair(&table->byId, id), std::pair(&table->byClass, instance),
          std::pair(&table->byClass, className), std::pair(&table->byId, className)}) {
      const auto found = entries->constFind(key);
      if (!key.isEmpty() && found != entries->constEnd()) return *found;
    }
    for (const QString& key : {id, className}) {
      if (const auto found = table->guessed.value(key)) return *found;
    }
  }
  const QString fallback = applicationId.isEmpty() ? window.className : applicationId;
  return {fallback, window.className.isEmpty() ? fallback : window.className};
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
  QList<InstalledApplication> applications;
  if (!table) return applications;
  for (const Table::Shown& shown : table->shown) {
    InstalledApplication application = shown.application;
    // Under the identifier by which its windows are known.
    const auto known = table->byClass.constFind(shown.windowClass);
    if (known != table->byClass.constEnd()) application.identifier = known->identifier;
    applications.append(application);
  }
  return applications;
}

}  // namespace nimbrel
