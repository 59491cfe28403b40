#pragma once

#include <QImage>
#include <QString>
#include <variant>

#include "platform/ImageCodec.h"
#include "platform/StopToken.h"

namespace nimbrel {

struct PreviewText final {
  QString text;
  /// Whether there is more than is shown.
  bool isCut = false;
};

struct PreviewPicture final {
  QImage image;
};

/// What can be said of a file that cannot be shown.
struct PreviewFacts final {
  QString name;
  /// The kind of file, in words.
  QString type;
  /// Names an icon of the desktop's theme.
  QString icon;
  /// Bytes, or the number of entries of a folder; −1 when not known.
  qint64 size = -1;
  bool isFolder = false;
};

/// It is not known yet.
struct PreviewPending final {};

/// There is nothing to be seen.
struct PreviewNothing final {};

/// A file as the preview shows it.
struct PreviewContent final {
  /// The name of the file, empty for one that has none but was written for the preview.
  QString title;
  std::variant<PreviewPending, PreviewNothing, PreviewText, PreviewPicture, PreviewFacts> body;
};

/// The most characters of a text that are shown.
inline constexpr qsizetype kMaxPreviewCharacters = 50'000;

/// Reads a file, whatever it is, with bounds on what is read: the beginning of a text, a picture scaled to
/// the screen, of all else what it is. Only regular files are opened. *Waits* for the disk and the decoder; a
/// requested stop ends the decoding soon.
[[nodiscard]] PreviewContent loadPreview(const QString& path, ImageCodec& codec, const StopToken& stop);

}  // namespace nimbrel
