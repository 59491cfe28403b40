#include "capture/model/ClipSource.h"

#include <array>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

struct DeviceNames {
  RemoteDeviceType device;
  QStringView raw;
  QStringView displayName;
};

constexpr std::array<DeviceNames, 4> kDevices{{
    {RemoteDeviceType::iPhone, u"iPhone", u"iPhone"},
    {RemoteDeviceType::iPad, u"iPad", u"iPad"},
    {RemoteDeviceType::mac, u"mac", u"Mac"},
    {RemoteDeviceType::universal, u"universal", u"Continuidad"},
}};

const DeviceNames& namesOf(RemoteDeviceType device) {
  return kDevices.at(static_cast<std::size_t>(device));
}

constexpr QStringView kContinuityPrefix = u"com.apple.continuity.";

}  // namespace

QString remoteDeviceRaw(RemoteDeviceType device) {
  return namesOf(device).raw.toString();
}

std::optional<RemoteDeviceType> remoteDeviceFromRaw(const QString& raw) {
  for (const auto& names : kDevices) {
    if (names.raw == raw) return names.device;
  }
  return std::nullopt;
}

QString remoteDeviceDefaultName(RemoteDeviceType device) {
  return namesOf(device).displayName.toString();
}

ClipSource remoteSource(RemoteDeviceType device, std::optional<QString> name) {
  return {.bundleID = kContinuityPrefix.toString() + remoteDeviceRaw(device).toLower(),
          .name = name ? std::move(name) : remoteDeviceDefaultName(device),
          .remoteDevice = device};
}

bool isRemoteSourceID(const QString& bundleID) {
  return bundleID.startsWith(kContinuityPrefix);
}

}  // namespace nimbrel
