#pragma once

#include <QStringView>

/// Places in the System Settings, as URLs that they open by.
namespace nimbrel::macos {

inline constexpr QStringView kPrivacySettings = u"x-apple.systempreferences:com.apple.preference.security";
inline constexpr QStringView kAccessibilitySettings =
    u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

}  // namespace nimbrel::macos
