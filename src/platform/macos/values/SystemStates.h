#pragma once

#include <QtGlobal>
#include <optional>

#include "platform/DeviceAuthenticator.h"
#include "platform/Pasteboard.h"

/// What the system's own states and errors mean to the program.
namespace nimbrel::macos {

/// NSPasteboardAccessBehavior, by its values from 0 on: default, ask, always allow, always deny (3). A value
/// of a later system is the default.
[[nodiscard]] Pasteboard::Access pasteboardAccess(qint64 behavior);

/// SMAppServiceStatus: not registered, enabled, requires approval, not found.
enum class LoginItemStatus : qint64 { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

/// Why the login item is not as asked for, though the system said nothing of an error; nothing when it is.
[[nodiscard]] std::optional<QString> loginItemObstacle(LoginItemStatus status, bool wanted);

/// LAPolicyDeviceOwnerAuthentication: biometrics, a paired watch, or the account's password.
inline constexpr qint64 kDeviceOwnerPolicy = 2;

/// How a request ended, by whether it succeeded, the LAError's code (0 where there is none) and its text.
[[nodiscard]] AuthenticationReply authenticationReply(bool success, qint64 errorCode, const QString& text);

}  // namespace nimbrel::macos
