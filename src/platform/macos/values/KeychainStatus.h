#pragma once

#include <QByteArray>
#include <optional>

#include "platform/SecretStore.h"

/// What the Keychain's answers mean.
namespace nimbrel::macos {

/// errSecSuccess, errSecItemNotFound, errSecDuplicateItem; and errSecNotAvailable, errSecNoDefaultKeychain
/// and errSecNoSuchKeychain, where there is no Keychain to be asked.
inline constexpr qint32 kKeychainSuccess = 0;
inline constexpr qint32 kKeychainItemNotFound = -25300;
inline constexpr qint32 kKeychainDuplicateItem = -25299;
inline constexpr qint32 kKeychainNotAvailable = -25291;
inline constexpr qint32 kNoSuchKeychain = -25294;
inline constexpr qint32 kNoDefaultKeychain = -25307;

/// A look-up by its status and the data that came with it, where what came was data. An item that holds
/// something else is found, and empty.
[[nodiscard]] SecretLookup secretLookup(qint32 status, std::optional<QByteArray> data);

}  // namespace nimbrel::macos
