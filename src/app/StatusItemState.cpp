#include "app/StatusItemState.h"

#include <QCoreApplication>

namespace nimbrel {
namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("StatusItem", text);
}

}  // namespace

StatusItemState statusItemState(bool paused, qsizetype queueLength) {
  const QString title = queueLength > 0 ? QString::number(queueLength) : QString();
  if (paused) return {QStringLiteral("pause.circle"), tr("Nimbrel en pausa"), title};
  if (queueLength > 0)
    return {QStringLiteral("doc.on.clipboard"), tr("Nimbrel: %1 en cola").arg(queueLength), title};
  return {QStringLiteral("doc.on.clipboard"), QStringLiteral("Nimbrel"), title};
}

}  // namespace nimbrel
