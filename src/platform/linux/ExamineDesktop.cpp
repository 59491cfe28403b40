#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFileInfo>

#include "platform/Platform.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/linux/X11KeystrokePoster.h"
#include "platform/linux/X11Session.h"
#include "platform/linux/Xcb.h"
#include "platform/linux/imaging/ImagingHelper.h"

namespace nimbrel {
namespace {

/// The trays of the two kinds: the StatusNotifierItem's watcher, and the owner of the system tray's selection
/// (System Tray Protocol, freedesktop.org).
bool hasTray(X11Session& session) {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (bus.isConnected() &&
      bus.interface()->isServiceRegistered(QStringLiteral("org.kde.StatusNotifierWatcher")))
    return true;
  const auto owner =
      session.reply(xcb_get_selection_owner_reply,
                    xcb_get_selection_owner(session.connection(),
                                            session.atoms().atom(QStringLiteral("_NET_SYSTEM_TRAY_S0"))));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

/// The languages that Tesseract has data for, wherever this version keeps them.
QStringList recognitionLanguages() {
  QStringList folders;
  if (const QByteArray own = qgetenv("TESSDATA_PREFIX"); !own.isEmpty())
    folders.append(QFile::decodeName(own));
  const QDir share(QStringLiteral("/usr/share/tesseract-ocr"));
  for (const QString& version : share.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
    folders.append(share.filePath(version + QStringLiteral("/tessdata")));
  folders += {QStringLiteral("/usr/share/tessdata"), QStringLiteral("/usr/local/share/tessdata")};
  QStringList languages;
  for (const QString& language : {QStringLiteral("spa"), QStringLiteral("eng")}) {
    const bool found = std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
      return QFileInfo::exists(QDir(folder).filePath(language + QStringLiteral(".traineddata")));
    });
    if (found) languages.append(language);
  }
  return languages;
}

QList<bool> takenOf(X11Session& session, const QList<HotKeyProbe>& hotKeys) {
  X11HotKeyRegistrar registrar(session);
  QList<bool> taken;
  for (const HotKeyProbe& probe : hotKeys) {
    const auto id = static_cast<quint32>(taken.size() + 1);
    taken.append(!registrar.registerHotKey(id, probe.keyCode, probe.modifiers));
  }
  return taken;
}

}  // namespace

DesktopFacts examineDesktop(const QList<HotKeyProbe>& hotKeys) {
  DesktopFacts facts;
  facts.hasSessionBus = QDBusConnection::sessionBus().isConnected();
  // Where polkit looks.
  for (const char* const folder : {"/usr/share", "/usr/local/share", "/etc", "/run"}) {
    const QString action =
        QStringLiteral("%1/polkit-1/actions/app.nimbrel.Nimbrel.policy").arg(QLatin1String(folder));
    facts.hasLockAction = facts.hasLockAction || QFileInfo::exists(action);
  }
  facts.hasImageHelper = QFileInfo(imagingHelperProgram()).isExecutable();
  facts.recognitionLanguages = recognitionLanguages();
  facts.hasForeignWindows = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
  X11Session session;
  facts.hasDisplay = session.isConnected();
  if (!facts.hasDisplay) return facts;
  facts.canPressKeys = isXtestUsable(session);
  facts.hasTray = hasTray(session);
  facts.takenHotKeys = takenOf(session, hotKeys);
  return facts;
}

}  // namespace nimbrel
