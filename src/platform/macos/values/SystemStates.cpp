#include "platform/macos/values/SystemStates.h"

#include <QCoreApplication>

namespace nimbrel::macos {
namespace {

/// LAError's codes for a device or a request that cannot ask anybody (LAError.Code): no passcode, no
/// biometrics or none enrolled, a context that is no longer one, no way to show anything.
constexpr bool isUnavailable(qint64 code) {
  return code == -5 || code == -6 || code == -7 || code == -10 || code == -1004;
}

}  // namespace

Pasteboard::Access pasteboardAccess(qint64 behavior) {
  switch (behavior) {
    case 1:
      return Pasteboard::Access::ask;
    case 2:
      return Pasteboard::Access::alwaysAllow;
    case 3:
      return Pasteboard::Access::alwaysDeny;
    default:
      return Pasteboard::Access::standard;
  }
}

std::optional<QString> loginItemObstacle(LoginItemStatus status, bool wanted) {
  if ((status == LoginItemStatus::enabled) == wanted) return std::nullopt;
  if (status == LoginItemStatus::requiresApproval && wanted)
    return QCoreApplication::translate("LoginItem",
                                       "Falta tu permiso: Ajustes del Sistema → General → Ítems de inicio.");
  if (!wanted && status == LoginItemStatus::requiresApproval) return std::nullopt;
  return QCoreApplication::translate("LoginItem", "El sistema no lo ha aceptado.");
}

AuthenticationReply authenticationReply(bool success, qint64 errorCode, const QString& text) {
  using Outcome = AuthenticationReply::Outcome;
  if (success) return {Outcome::proven, {}};
  if (isUnavailable(errorCode)) return {Outcome::unavailable, text};
  return {Outcome::refused, {}};
}

}  // namespace nimbrel::macos
