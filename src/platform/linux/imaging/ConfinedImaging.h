#pragma once

#include "platform/ImageCodec.h"
#include "platform/TextRecognizer.h"
#include "platform/linux/imaging/ImagingHelper.h"

namespace nimbrel {

/// Images decoded and encoded by the confined helper.
class ConfinedImageCodec final : public ImageCodec {
 public:
  explicit ConfinedImageCodec(const QString& program);

  [[nodiscard]] std::variant<Encoded, ImageError> encodePng(const QByteArray& image, int maxPixelSize,
                                                            const StopToken& stop) override;
  [[nodiscard]] std::variant<QImage, ImageError> thumbnail(const QByteArray& image, int maxPixelSize,
                                                           const StopToken& stop) override;
  [[nodiscard]] std::variant<QByteArray, ImageError> convert(const QByteArray& image, Format format,
                                                             const StopToken& stop) override;

  [[nodiscard]] ImagingHelper& helper() { return helper_; }

 private:
  ImagingHelper helper_;
};

/// Text read by Tesseract in the confined helper, in Spanish and English at once.
class ConfinedTextRecognizer final : public TextRecognizer {
 public:
  explicit ConfinedTextRecognizer(const QString& program);

  [[nodiscard]] std::variant<QList<RecognizedLine>, ImageError> recognizeText(const QByteArray& image,
                                                                              const StopToken& stop) override;

  [[nodiscard]] ImagingHelper& helper() { return helper_; }

 private:
  ImagingHelper helper_;
};

}  // namespace nimbrel
