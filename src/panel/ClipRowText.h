#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include "capture/model/IndexedClip.h"

namespace nimbrel {

/// Whether a clip's content must not be shown.
[[nodiscard]] bool isMasked(const ClipItem& clip);

/// The bullets that stand for a secret: after the prefix of a well-known kind of token, 16; else 20. Their
/// number says nothing about the secret's length.
[[nodiscard]] QString maskedPreview(const QString& text);

/// The one line that a row shows of a clip: its first 300 characters with white space folded into single
/// spaces, bullets for a sensitive clip, "Imagen copiada" for an image without text.
[[nodiscard]] QString previewText(const ClipItem& clip);

/// How long ago a moment is, in words that fit a row: "ahora", "hace 2 min", "hace 3 h", "ayer", a weekday
/// within the last week, else day and month, with the year when it is another one.
[[nodiscard]] QString relativeDate(const QDateTime& moment, const QDateTime& now, const QLocale& locale);

/// "Origen: …" for a local application, the device's line for a clip from another device, nothing when
/// unknown.
[[nodiscard]] QString sourceLabel(const ClipItem& clip);

/// "51 car.", the number of characters of a text clip; nothing for other clips, for masked ones, and for a
/// long text as long as it has not been counted.
[[nodiscard]] QString lengthLabel(const IndexedClip& clip, const QLocale& locale);

/// What a screen reader says of a row; never the content of a masked clip.
[[nodiscard]] QString accessibleText(const ClipItem& clip);

}  // namespace nimbrel
