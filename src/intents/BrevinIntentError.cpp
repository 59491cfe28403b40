#include "intents/BrevinIntentError.h"

#include <QCoreApplication>
#include <algorithm>

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(BrevinIntentError)
};

}  // namespace

QString localizedDescription(BrevinIntentError error) {
  switch (error) {
    case BrevinIntentError::unavailable:
      return Texts::tr("Nimbrel no está disponible.");
    case BrevinIntentError::emptyHistory:
      return Texts::tr("No hay texto seguro en el historial.");
    case BrevinIntentError::emptyCollection:
      return Texts::tr("La colección no contiene texto seguro.");
    case BrevinIntentError::authenticationFailed:
      return Texts::tr("No se pudo desbloquear Brevin.");
    case BrevinIntentError::accessibilityRequired:
      return Texts::tr("Concede permiso de Accesibilidad para pegar automáticamente.");
  }
  return {};
}

QString name(BrevinIntentError error) {
  switch (error) {
    case BrevinIntentError::unavailable:
      return QStringLiteral("unavailable");
    case BrevinIntentError::emptyHistory:
      return QStringLiteral("emptyHistory");
    case BrevinIntentError::emptyCollection:
      return QStringLiteral("emptyCollection");
    case BrevinIntentError::authenticationFailed:
      return QStringLiteral("authenticationFailed");
    case BrevinIntentError::accessibilityRequired:
      return QStringLiteral("accessibilityRequired");
  }
  return {};
}

std::optional<BrevinIntentError> brevinIntentErrorNamed(const QString& wanted) {
  const auto found = std::find_if(kBrevinIntentErrors.begin(), kBrevinIntentErrors.end(),
                                  [&](BrevinIntentError error) { return name(error) == wanted; });
  if (found == kBrevinIntentErrors.end()) return std::nullopt;
  return *found;
}

}  // namespace nimbrel
