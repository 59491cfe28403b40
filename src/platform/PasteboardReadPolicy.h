#pragma once

#include <QSet>
#include <QString>

namespace nimbrel {

/// What to read of a change, and how much of it: sizes in bytes. Nothing of a change that carries one of
/// `ignoredTypes` is read; formats are taken in the order file, text (with its rich forms), image, and the
/// first that has content ends the reading.
struct PasteboardReadPolicy final {
  QSet<QString> ignoredTypes;
  qint64 maxTextBytes = 0;
  qint64 maxImageBytes = 0;
  qint64 maxRichBytes = 0;
  bool wantsRichText = false;
  /// What comes to nothing in the end, for desktops that read only when they are asked for a change, and can
  /// leave it: nothing at all while capture is paused, and what was put there while one of these applications
  /// was in front, unless it came from another device.
  bool paused = false;
  QSet<QString> ignoredApplications;

  bool operator==(const PasteboardReadPolicy&) const = default;
};

}  // namespace nimbrel
