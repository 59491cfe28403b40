#pragma once

#include <QImage>
#include <QList>
#include <memory>
#include <variant>

#include "platform/TextRecognizer.h"

namespace tesseract {
class TessBaseAPI;
}

namespace nimbrel {

/// Finds the lines of text in a picture with Tesseract's neural recognizer, in Spanish and English at once.
class LineRecognizer final {
 public:
  /// Loads the language models; nothing when they are not installed.
  [[nodiscard]] static std::unique_ptr<LineRecognizer> load();
  ~LineRecognizer();
  LineRecognizer(const LineRecognizer&) = delete;
  LineRecognizer& operator=(const LineRecognizer&) = delete;

  /// The lines in reading order as the recognizer sees it, boxes in the picture's pixels.
  [[nodiscard]] std::variant<QList<RecognizedLine>, ImageError> recognize(const QImage& image);

 private:
  explicit LineRecognizer(std::unique_ptr<tesseract::TessBaseAPI> engine);

  std::unique_ptr<tesseract::TessBaseAPI> engine_;
};

}  // namespace nimbrel
