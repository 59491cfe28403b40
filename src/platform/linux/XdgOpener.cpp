#include "platform/linux/XdgOpener.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace nimbrel {
namespace {

struct Program {
  QString name;
  QStringList arguments;
};

/// Starts the first of some programs that is installed.
bool startFirst(const QList<Program>& programs) {
  for (const Program& program : programs) {
    const QString path = QStandardPaths::findExecutable(program.name);
    if (!path.isEmpty()) return QProcess::startDetached(path, program.arguments);
  }
  return false;
}

}  // namespace

bool XdgOpener::openUrl(const QUrl& url) {
  return QDesktopServices::openUrl(url);
}

bool XdgOpener::reveal(const QList<QUrl>& files) {
  QStringList uris;
  for (const QUrl& file : files)
    uris.append(QString::fromLatin1(file.toEncoded()));
  if (uris.isEmpty()) return false;
  auto call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
  call << uris << QString();
  auto* const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
  const QUrl folder = QUrl::fromLocalFile(QFileInfo(files.first().toLocalFile()).absolutePath());
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, folder](QDBusPendingCallWatcher* done) {
    done->deleteLater();
    if (done->isError()) openUrl(folder);
  });
  return true;
}

bool XdgOpener::openPrivacySettings() {
  return startFirst({{QStringLiteral("gnome-control-center"), {QStringLiteral("privacy")}},
                     {QStringLiteral("systemsettings"), {}}});
}

bool XdgOpener::openKeyStore() {
  return startFirst({{QStringLiteral("seahorse"), {}},
                     {QStringLiteral("kwalletmanager5"), {QStringLiteral("--show")}},
                     {QStringLiteral("kwalletmanager"), {QStringLiteral("--show")}}});
}

}  // namespace nimbrel
