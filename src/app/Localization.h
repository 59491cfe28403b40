#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <QTranslator>

namespace nimbrel {

/// The language of the interface, "es" or "en": English when it is the first of the user's languages (as
/// `QLocale::uiLanguages` gives them), Spanish for everybody else.
[[nodiscard]] QString interfaceLanguage(const QStringList& userLanguages);

/// Has the interface, and what the toolkit itself says, in a language while it lives. Texts are written in
/// Spanish in the code; for Spanish only counted words need their forms. An application object must exist.
/// Main thread.
class Localization final {
 public:
  explicit Localization(const QString& language);
  ~Localization();
  Localization(const Localization&) = delete;
  Localization& operator=(const Localization&) = delete;

 private:
  const QLocale previous_;
  QTranslator toolkit_;
  QTranslator texts_;
};

}  // namespace nimbrel
