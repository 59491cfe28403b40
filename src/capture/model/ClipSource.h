#pragma once

#include <QString>
#include <optional>

#include "capture/model/RemoteDeviceType.h"

namespace nimbrel {

/// Where one capture came from: the application in front, or another device; all empty when nothing is known.
struct ClipSource final {
  std::optional<QString> bundleID;
  std::optional<QString> name;
  std::optional<RemoteDeviceType> remoteDevice;

  bool operator==(const ClipSource&) const = default;
};

/// The source of a clip received from another device: the continuity identifier of its kind, and the given
/// name or the kind's default one.
[[nodiscard]] ClipSource remoteSource(RemoteDeviceType device, std::optional<QString> name = std::nullopt);

/// Whether a stored `sourceBundleID` marks a clip received from another device.
[[nodiscard]] bool isRemoteSourceID(const QString& bundleID);

}  // namespace nimbrel
