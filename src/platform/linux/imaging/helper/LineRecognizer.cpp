#include "platform/linux/imaging/helper/LineRecognizer.h"

#include <tesseract/baseapi.h>

#include <algorithm>
#include <cmath>

#include "platform/common/ImageEncoding.h"
#include "platform/common/ImageLimits.h"
#include "platform/linux/imaging/helper/BoundedImage.h"

namespace nimbrel {
namespace {

/// Tesseract reads letters of 20 to 40 pixels best; those of a screen have half of that.
constexpr double kScreenScale = 2.0;
/// Pictures with more pixels than this are camera photos or large screens and are not enlarged…
constexpr double kMaxEnlargedPixels = 12e6;
/// …and above this they are made smaller, since time and memory grow with them.
constexpr double kMaxPixelsRead = 24e6;
/// The longest side that the recognizer takes, without the margin.
constexpr double kMaxSideRead = 32'000;
/// Below this mean confidence, in percent, a line is noise that looks like letters.
constexpr float kMinConfidence = 40;
/// Letters at the very edge are not seen.
constexpr int kMargin = 10;

double scaleFor(const QSize& size) {
  const double pixels = double(size.width()) * size.height();
  const double longest = kMaxSideRead / std::max(size.width(), size.height());
  if (pixels * kScreenScale * kScreenScale <= kMaxEnlargedPixels) return std::min(kScreenScale, longest);
  return std::min({1.0, longest, std::sqrt(kMaxPixelsRead / pixels)});
}

/// Dark letters on a light ground, which is what the recognizer was trained on.
void makeLight(QImage& gray) {
  qint64 sum = 0;
  for (int y = 0; y < gray.height(); ++y) {
    const uchar* const line = gray.constScanLine(y);
    for (int x = 0; x < gray.width(); ++x)
      sum += line[x];
  }
  constexpr int kMiddle = 128;
  if (sum < qint64(kMiddle) * gray.width() * gray.height()) gray.invertPixels();
}

QImage withMargin(const QImage& gray) {
  QImage framed(gray.width() + 2 * kMargin, gray.height() + 2 * kMargin, QImage::Format_Grayscale8);
  framed.fill(Qt::white);
  for (int y = 0; y < gray.height(); ++y)
    std::copy_n(gray.constScanLine(y), gray.width(), framed.scanLine(y + kMargin) + kMargin);
  return framed;
}

QImage prepared(const QImage& image, double scale) {
  QImage gray = onWhite(image).convertToFormat(QImage::Format_Grayscale8);
  if (scale != 1.0) {
    const QSize size = (QSizeF(image.size()) * scale).toSize().expandedTo(QSize(1, 1));
    gray = gray.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    gray = gray.convertToFormat(QImage::Format_Grayscale8);
  }
  makeLight(gray);
  return withMargin(gray);
}

}  // namespace

std::unique_ptr<LineRecognizer> LineRecognizer::load() {
  auto engine = std::make_unique<tesseract::TessBaseAPI>();
  if (engine->Init(nullptr, "spa+eng", tesseract::OEM_LSTM_ONLY) != 0) return nullptr;
  engine->SetPageSegMode(tesseract::PSM_AUTO);
  return std::unique_ptr<LineRecognizer>(new LineRecognizer(std::move(engine)));
}

LineRecognizer::LineRecognizer(std::unique_ptr<tesseract::TessBaseAPI> engine) : engine_(std::move(engine)) {}

LineRecognizer::~LineRecognizer() = default;

std::variant<QList<RecognizedLine>, ImageError> LineRecognizer::recognize(const QImage& image) {
  const double scale = scaleFor(image.size());
  const QImage page = prepared(image, scale);
  engine_->SetImage(page.constBits(), page.width(), page.height(), 1, static_cast<int>(page.bytesPerLine()));
  constexpr int kResolution = 150;
  engine_->SetSourceResolution(kResolution);
  if (engine_->Recognize(nullptr) != 0) return ImageError{QStringLiteral("el reconocedor ha fallado")};
  QList<RecognizedLine> lines;
  const std::unique_ptr<tesseract::ResultIterator> found(engine_->GetIterator());
  constexpr auto kLine = tesseract::RIL_TEXTLINE;
  if (found && !found->Empty(kLine)) {
    do {
      int left = 0;
      int top = 0;
      int right = 0;
      int bottom = 0;
      const std::unique_ptr<const char[]> text(found->GetUTF8Text(kLine));
      if (!text || found->Confidence(kLine) < kMinConfidence) continue;
      if (!found->BoundingBox(kLine, &left, &top, &right, &bottom)) continue;
      const QString trimmed = QString::fromUtf8(text.get()).trimmed();
      if (trimmed.isEmpty()) continue;
      const QRectF box(left - kMargin, top - kMargin, right - left, bottom - top);
      lines.append({trimmed, QRectF(box.topLeft() / scale, box.size() / scale)});
    } while (found->Next(kLine));
  }
  engine_->Clear();
  return lines;
}

}  // namespace nimbrel
