#pragma once

#include "platform/TextRecognizer.h"

namespace nimbrel::macos {

/// Vision's text recognition, on this Mac and in the languages that it detects.
class VisionTextRecognizer final : public TextRecognizer {
 public:
  [[nodiscard]] std::variant<QList<RecognizedLine>, ImageError> recognizeText(const QByteArray& image,
                                                                              const StopToken& stop) override;
};

/// The languages that it can read, by their codes.
[[nodiscard]] QStringList recognizableLanguages();

}  // namespace nimbrel::macos
