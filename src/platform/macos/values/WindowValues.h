#pragma once

#include <QtGlobal>

/// What AppKit's windows, items and events are asked for, as numbers; each with the name of its constant in
/// AppKit's documentation.
namespace nimbrel::macos {

/// NSWindowStyleMaskNonactivatingPanel alone: no title bar, and whoever types in it leaves the application in
/// front the active one. To be given when the panel is made; AppKit does not heed half of it later.
inline constexpr quint64 kPanelStyleMask = 1ULL << 7;

/// NSBackingStoreBuffered.
inline constexpr quint64 kPanelBacking = 2;

/// NSFloatingWindowLevel.
inline constexpr qint64 kPanelLevel = 3;

/// NSWindowCollectionBehaviorCanJoinAllSpaces and NSWindowCollectionBehaviorFullScreenAuxiliary.
inline constexpr quint64 kPanelCollectionBehavior = 1ULL << 0 | 1ULL << 8;

/// NSWindowStyleMaskTitled and NSWindowStyleMaskClosable, and NSWindowCollectionBehaviorMoveToActiveSpace,
/// for the settings window.
inline constexpr quint64 kSettingsStyleMask = 1ULL << 0 | 1ULL << 1;
inline constexpr quint64 kSettingsCollectionBehavior = 1ULL << 1;

/// NSSquareStatusItemLength, and NSVariableStatusItemLength for as long as a title stands beside the symbol.
inline constexpr double kStatusItemLength = -2.0;
inline constexpr double kTitledStatusItemLength = -1.0;

/// NSApplicationActivationPolicyAccessory: no Dock icon, no menu bar.
inline constexpr qint64 kActivationPolicy = 1;

}  // namespace nimbrel::macos
