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

/// Toolkits name the instance of every window alike, and a browser its windows.
bool isToolkitInstance(const QString& instance) {
  return instance.startsWith(u"sun-awt-x11-") || instance == u"navigator";
}

/// Entries by what an application might call itself; none where several might.
class Guesses final {
 public:
  void add(const QString& key, const QString& id) {
    if (key.isEmpty()) return;
    const auto known = ids_.constFind(key);
    ids_.insert(key, known != ids_.constEnd() && *known != id ? QString() : id);
  }
  /// An id, empty for nothing.
  [[nodiscard]] QString find(const QString& key) const { return ids_.value(key); }

 private:
  QHash<QString, QString> ids_;
};

}  // namespace

/// What the files say, by lower-case keys.
struct DesktopEntries::Table {
  struct File {
    DesktopEntry entry;
    QString windowClass;
    QString icon;
    bool isShown = false;
  };

  QHash<QString, File> byId;
  /// The ids of the files that state a window class; one that menus show goes before one that they do not.
  QHash<QString, QString> byClass;
  /// For applications that state no window class.
  Guesses byLastPart;
  Guesses byProgram;
  /// In the order in which they were read.
  QStringList ids;
  /// Those of files that are called deleted, too.
  QSet<QString> seenIds;
  const QString language = QLocale::system().uiLanguages().value(0).replace(u'-', u'_');
  const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);

  void add(const QString& id, const DesktopFile& file, bool isShown);
  void addClass(const QString& windowClass, const QString& id, bool isShown);
  void readFolder(const QString& folder);
  void settleIdentifiers();
  [[nodiscard]] bool isShown(const QString& id) const { return byId.value(id).isShown; }
};

void DesktopEntries::Table::addClass(const QString& windowClass, const QString& id, bool isShown) {
  if (windowClass.isEmpty() || isToolkitInstance(windowClass)) return;
  const auto known = byClass.constFind(windowClass);
  if (known == byClass.constEnd() || (isShown && !this->isShown(*known))) byClass.insert(windowClass, id);
}

void DesktopEntries::Table::add(const QString& id, const DesktopFile& file, bool isShown) {
  const QString name = file.localValue(u"Name"_s, language);
  const QString key = id.toLower();
  const QString windowClass = file.value(u"StartupWMClass"_s).toLower();
  ids.append(key);
  byId.insert(key, {.entry = {ignoredIdentifier(id).value_or(id), name.isEmpty() ? id : name},
                    .windowClass = windowClass,
                    .icon = file.localValue(u"Icon"_s, language),
                    .isShown = isShown});
  addClass(windowClass, key, isShown);
  if (!isShown || !windowClass.isEmpty() || file.isTrue(u"Terminal"_s)) return;
  const QString program = programOf(file.value(u"Exec"_s)).toLower();
  byLastPart.add(key.section(u'.', -1), key);
  if (!isStarter(program)) byProgram.add(program, key);
}

void DesktopEntries::Table::settleIdentifiers() {
  for (auto owner = byClass.begin(); owner != byClass.end(); ++owner) {
    // Whoever is called like the class needs not state it.
    if (isShown(owner.key())) *owner = owner.key();
  }
  // Files whose windows cannot be told apart are one application, by whatever it is found.
  QHash<QString, QString> identifiers;
  for (auto file = byId.cbegin(); file != byId.cend(); ++file) {
    const auto owner = byClass.constFind(file->windowClass);
    if (const auto known = ignoredIdentifier(file->windowClass))
      identifiers.insert(file.key(), *known);
    else if (owner != byClass.cend())
      identifiers.insert(file.key(), byId.value(*owner).entry.identifier);
  }
  for (auto it = identifiers.cbegin(); it != identifiers.cend(); ++it)
    byId[it.key()].entry.identifier = *it;
}

void DesktopEntries::Table::readFolder(const QString& folder) {
  QStringList paths;
  QDirIterator files(folder, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext())
    paths.append(files.next());
  // Which of two files wins must not depend on how the disk happens to hold them.
  paths.sort();
  for (const QString& path : std::as_const(paths)) {
    // Sub-folders become part of the id, joined with hyphens.
    const QString id = path.mid(folder.size() + 1).chopped(8).replace(u'/', u'-');
    if (seenIds.contains(id.toLower())) continue;
    const auto file = DesktopFile::read(path);
    if (!file) continue;
    // One that is called deleted hides those of the same name in less important folders.
    seenIds.insert(id.toLower());
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
      return {*known, table && table->byId.contains(key.toLower())
                          ? table->byId.value(key.toLower()).entry.name
                          : key};
  }
  if (table) {
    // A window of a browser that is an application of its own differs in its instance only.
    const QString byInstance = isToolkitInstance(instance) ? QString() : table->byClass.value(instance);
    for (const QString& key :
         {id, byInstance, table->byClass.value(className), className, table->byLastPart.find(id),
          table->byLastPart.find(className), table->byProgram.find(id), table->byProgram.find(className)}) {
      const auto found = table->byId.constFind(key);
      if (!key.isEmpty() && found != table->byId.constEnd()) return found->entry;
    }
  }
  const QString fallback = applicationId.isEmpty() ? window.className : applicationId;
  return {fallback, window.className.isEmpty() ? fallback : window.className};
}

void DesktopEntries::load() {
  auto read = std::make_shared<Table>();
  for (const QString& folder : folders_)
    read->readFolder(folder);
  read->settleIdentifiers();
  const std::lock_guard lock(mutex_);
  table_ = std::move(read);
}

QList<InstalledApplication> DesktopEntries::shown() const {
  const auto table = this->table();
  QList<InstalledApplication> applications;
  if (!table) return applications;
  for (const QString& id : table->ids) {
    const Table::File file = table->byId.value(id);
    if (file.isShown)
      applications.append({.identifier = file.entry.identifier, .name = file.entry.name, .icon = file.icon});
  }
  return applications;
}

}  // namespace nimbrel
