#include "settings/model/IgnoredApp.h"

#include <QCoreApplication>
#include <algorithm>

namespace nimbrel {
namespace {

// The names that are stored, and translated where they are shown.
constexpr const char* kPasswords = QT_TRANSLATE_NOOP("IgnoredApp", "Contraseñas");
constexpr const char* kKeychainAccess = QT_TRANSLATE_NOOP("IgnoredApp", "Acceso a Llaveros");

}  // namespace

using namespace Qt::StringLiterals;

QList<IgnoredApp> defaultIgnoredApps() {
  return {
      {u"com.apple.Passwords"_s, QString::fromUtf8(kPasswords)},
      {u"com.apple.keychainaccess"_s, QString::fromUtf8(kKeychainAccess)},
      {u"com.1password.1password"_s, u"1Password"_s},
      {u"com.agilebits.onepassword-osx"_s, u"1Password 7"_s},
      {u"com.bitwarden.desktop"_s, u"Bitwarden"_s},
      {u"org.keepassxc.keepassxc"_s, u"KeePassXC"_s},
      {u"com.dashlane.Dashlane"_s, u"Dashlane"_s},
      {u"com.enpass.Enpass"_s, u"Enpass"_s},
      {u"com.lastpass.LastPass"_s, u"LastPass"_s},
      {u"com.authy"_s, u"Authy"_s},
  };
}

bool containsApp(const QList<IgnoredApp>& apps, const QString& bundleID) {
  return std::any_of(apps.cbegin(), apps.cend(),
                     [&](const IgnoredApp& app) { return app.bundleID == bundleID; });
}

QString shownName(const IgnoredApp& app) {
  const bool isOurs =
      app.name == QString::fromUtf8(kPasswords) || app.name == QString::fromUtf8(kKeychainAccess);
  return isOurs ? QCoreApplication::translate("IgnoredApp", app.name.toUtf8().constData()) : app.name;
}

}  // namespace nimbrel
