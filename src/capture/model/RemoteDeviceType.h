#pragma once

#include <QString>
#include <optional>

namespace nimbrel {

/// The kind of device that a clip was received from; `universal` when the kind is not known.
enum class RemoteDeviceType { iPhone, iPad, mac, universal };

/// The stored spelling: "iPhone", "iPad", "mac" or "universal".
[[nodiscard]] QString remoteDeviceRaw(RemoteDeviceType device);

/// The inverse of `remoteDeviceRaw`, case-sensitive; nothing for any other text.
[[nodiscard]] std::optional<RemoteDeviceType> remoteDeviceFromRaw(const QString& raw);

/// The name shown when the device gave none: "iPhone", "iPad", "Mac" or "Continuidad".
[[nodiscard]] QString remoteDeviceDefaultName(RemoteDeviceType device);

}  // namespace nimbrel
