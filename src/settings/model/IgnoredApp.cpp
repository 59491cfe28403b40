#include "settings/model/IgnoredApp.h"

namespace nimbrel {

using namespace Qt::StringLiterals;

QList<IgnoredApp> defaultIgnoredApps() {
  return {
      {u"com.apple.Passwords"_s, u"Contraseñas"_s},   {u"com.apple.keychainaccess"_s, u"Acceso a Llaveros"_s},
      {u"com.1password.1password"_s, u"1Password"_s}, {u"com.agilebits.onepassword-osx"_s, u"1Password 7"_s},
      {u"com.bitwarden.desktop"_s, u"Bitwarden"_s},   {u"org.keepassxc.keepassxc"_s, u"KeePassXC"_s},
      {u"com.dashlane.Dashlane"_s, u"Dashlane"_s},    {u"com.enpass.Enpass"_s, u"Enpass"_s},
      {u"com.lastpass.LastPass"_s, u"LastPass"_s},    {u"com.authy"_s, u"Authy"_s},
  };
}

}  // namespace nimbrel
