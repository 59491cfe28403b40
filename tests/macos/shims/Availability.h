#pragma once

#define __MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define __MAC_OS_X_VERSION_MAX_ALLOWED 150400

/// "Since this version of macOS": clang minds a use that nothing guards.
#define API_AVAILABLE_SINCE(version) __attribute__((availability(macos, introduced = version)))
