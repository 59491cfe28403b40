#include "intents/BrevinAppShortcuts.h"

#include <QCoreApplication>

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(BrevinAppShortcuts)
};

}  // namespace

QList<AppShortcut> BrevinAppShortcuts::appShortcuts(const QString& applicationName) {
  return {
      {Intent::copyLatestClip, Texts::tr("Copiar lo último en %1").arg(applicationName),
       Texts::tr("Copiar último"), QStringLiteral("doc.on.clipboard")},
      {Intent::searchHistory, Texts::tr("Buscar historial en %1").arg(applicationName),
       Texts::tr("Buscar historial"), QStringLiteral("magnifyingglass")},
      {Intent::toggleCapture, Texts::tr("Pausar o reanudar captura en %1").arg(applicationName),
       Texts::tr("Pausar captura"), QStringLiteral("pause.circle")},
      {Intent::pasteFromCollection, Texts::tr("Pegar desde colección en %1").arg(applicationName),
       Texts::tr("Pegar colección"), QStringLiteral("rectangle.on.clipboard")},
  };
}

}  // namespace nimbrel
