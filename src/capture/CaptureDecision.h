#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <variant>

#include "capture/model/ClipSource.h"
#include "capture/model/RichContent.h"
#include "platform/PasteboardReadPolicy.h"
#include "platform/PasteboardSnapshot.h"
#include "settings/model/SettingsValues.h"

namespace nimbrel {

inline constexpr qint64 kMaxTextBytes = 1'000'000;
inline constexpr qint64 kMaxImageBytes = 20'000'000;
inline constexpr qint64 kMaxRichBytes = 256'000;

struct CaptureNothing final {
  bool operator==(const CaptureNothing&) const = default;
};
struct CaptureFiles final {
  /// Absolute URLs and plain paths, one a line.
  QString urls;
  QString paths;
  ClipSource source;
  bool operator==(const CaptureFiles&) const = default;
};
struct CaptureText final {
  /// As copied, not trimmed.
  QString text;
  std::optional<RichContent> rich;
  ClipSource source;
  bool operator==(const CaptureText&) const = default;
};
struct CaptureImage final {
  QByteArray data;
  ClipSource source;
  bool operator==(const CaptureImage&) const = default;
};

/// What to record of one change of the pasteboard.
using CaptureDecision = std::variant<CaptureNothing, CaptureFiles, CaptureText, CaptureImage>;

/// What capture wants read of a change, and how much of it at most.
[[nodiscard]] PasteboardReadPolicy captureReadPolicy(const SettingsValues& settings);

/// Decides by the marks on the content, its source, and its formats in the order file, text, image.
/// `frontmost` is the application in front now, used when the snapshot does not say which one was when it was
/// taken.
[[nodiscard]] CaptureDecision decideCapture(const PasteboardSnapshot& snapshot,
                                            const std::optional<RunningApplication>& frontmost,
                                            const SettingsValues& settings);

}  // namespace nimbrel
