#pragma once

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <QString>
#include <variant>

#include "platform/ImageCodec.h"
#include "platform/StopToken.h"

namespace nimbrel {

/// One line of text found in an image.
struct RecognizedLine final {
  QString text;
  /// In the image's own pixels, from its top left corner.
  QRectF box;
  bool operator==(const RecognizedLine&) const = default;
};

/// Reads the text in images, in the languages that the desktop's recognizer detects.
class TextRecognizer {
 public:
  virtual ~TextRecognizer() = default;

  /// The lines in the recognizer's own order; an image without text has none. May take many seconds, so never
  /// on the main thread; otherwise any thread, one image at a time. A requested stop makes it fail soon.
  [[nodiscard]] virtual std::variant<QList<RecognizedLine>, ImageError> recognizeText(
      const QByteArray& image, const StopToken& stop) = 0;
};

}  // namespace nimbrel
