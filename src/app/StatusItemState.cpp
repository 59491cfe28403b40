#include "app/StatusItemState.h"

#include <QCoreApplication>

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(StatusItem)
};

}  // namespace

StatusItemState statusItemState(bool paused, qsizetype queueLength) {
  const QString title = queueLength > 0 ? QString::number(queueLength) : QString();
  if (paused) return {QStringLiteral("pause.circle"), Texts::tr("Nimbrel en pausa"), title};
  if (queueLength > 0)
    return {QStringLiteral("doc.on.clipboard"), Texts::tr("Nimbrel: %1 en cola").arg(queueLength), title};
  return {QStringLiteral("doc.on.clipboard"), QStringLiteral("Nimbrel"), title};
}

}  // namespace nimbrel
