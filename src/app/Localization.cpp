#include "app/Localization.h"

#include <QCoreApplication>
#include <QLibraryInfo>

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
  initTranslationResources();
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (toolkit_.load(u"qtbase_"_s + language, folder)) QCoreApplication::installTranslator(&toolkit_);
  if (texts_.load(u":/translations/nimbrel_"_s + language)) QCoreApplication::installTranslator(&texts_);
}

Localization::~Localization() {
  QCoreApplication::removeTranslator(&texts_);
  QCoreApplication::removeTranslator(&toolkit_);
}

}  // namespace nimbrel
