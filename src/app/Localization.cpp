#include "app/Localization.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

// The macro must stand outside of any namespace.
static void initTranslationResources() {
  Q_INIT_RESOURCE(translations);
}

namespace nimbrel {

using namespace Qt::StringLiterals;

QString interfaceLanguage(const QStringList& userLanguages) {
  const QString first = userLanguages.value(0).section(u'-', 0, 0).section(u'_', 0, 0).toLower();
  return first == u"en" ? u"en"_s : u"es"_s;
}

Localization::Localization(const QString& language) {
  // Dates and numbers speak the language of the texts around them, with the user's own conventions if he has
  // any in that language.
  const QLocale system = QLocale::system();
  const QLocale wanted(language);
  QLocale::setDefault(system.language() == wanted.language() ? system : wanted);
  initTranslationResources();
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (toolkit_.load(u"qtbase_"_s + language, folder)) QCoreApplication::installTranslator(&toolkit_);
  if (texts_.load(u":/translations/nimbrel_"_s + language)) QCoreApplication::installTranslator(&texts_);
}

Localization::~Localization() {
  QLocale::setDefault(previous_);
  QCoreApplication::removeTranslator(&texts_);
  QCoreApplication::removeTranslator(&toolkit_);
}

}  // namespace nimbrel
