#pragma once

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>

#include "capture/model/IndexedClip.h"
#include "capture/model/SourceApp.h"

namespace nimbrel {

/// How much of a clip's content may be shown: all of an ordinary one; of a sensitive one nothing, until the
/// user asks for it.
enum class Secrecy { none, masked, revealed };

/// The bullets that stand for a secret: after the prefix of a well-known kind of token, 16; else 20. Their
/// number says nothing about the secret's length.
[[nodiscard]] QString maskedPreview(const QString& text);

/// The one line that a row shows of a clip: its first 300 characters with white space folded into single
/// spaces, bullets for a masked clip, "Imagen copiada" for an image without text.
[[nodiscard]] QString previewText(const ClipItem& clip, Secrecy secrecy);

/// How long ago a moment is, in words that fit a row: "ahora", "hace 2 min", "hace 3 h", "ayer", a weekday
/// within the last week, else day and month, with the year when it is another one.
[[nodiscard]] QString relativeDate(const QDateTime& moment, const QDateTime& now, const QLocale& locale);

/// The name of an application, or of another device, in the user's language.
[[nodiscard]] QString shownName(const SourceApp& app);

/// "Origen: …" for a local application, the device's line for a clip from another device, nothing when
/// unknown.
[[nodiscard]] QString sourceLabel(const ClipItem& clip);

/// "51 car.", the number of characters of a text clip; nothing for other clips, for masked ones, and for a
/// long text as long as it has not been counted.
[[nodiscard]] QString lengthLabel(const IndexedClip& clip, Secrecy secrecy, const QLocale& locale);

/// A small label of a row.
struct RowDetail final {
  /// A symbol's name; may be empty, and so may the text.
  QString symbol;
  QString text;
  /// Drawn bold, in the accent colour.
  bool accented = false;

  bool operator==(const RowDetail&) const = default;
};

/// The labels that apply to a clip, in the order in which they are shown.
[[nodiscard]] QList<RowDetail> rowDetails(const IndexedClip& clip, Secrecy secrecy, const QDateTime& now,
                                          const QLocale& locale);

/// What a screen reader says of a row; never the content of a masked clip.
[[nodiscard]] QString accessibleText(const ClipItem& clip, Secrecy secrecy, bool queued);

}  // namespace nimbrel
