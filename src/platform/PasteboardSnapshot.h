#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <chrono>
#include <optional>

#include "platform/RunningApplication.h"

namespace nimbrel {

/// What the pasteboard held after one change, read once and never altered. An unreadable change has no types.
struct PasteboardSnapshot final {
  qint64 changeCount = 0;
  QStringList types;
  QList<QUrl> fileUrls;
  std::optional<QString> text;
  std::optional<QByteArray> rtf;
  std::optional<QByteArray> html;
  /// An encoded image: PNG if the pasteboard has it, else TIFF, else another raster format that it offers.
  std::optional<QByteArray> image;
  /// Types that were offered but exceed their budget in `PasteboardReadPolicy`; their bytes were not read.
  QSet<QString> oversized;
  /// The application in front when the content was put there, where the desktop can tell.
  std::optional<RunningApplication> frontApplication;
  /// When it was put there, where the desktop can tell.
  std::optional<std::chrono::steady_clock::time_point> changedAt;

  bool operator==(const PasteboardSnapshot&) const = default;
};

}  // namespace nimbrel
