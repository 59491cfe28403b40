#include "platform/linux/imaging/ConfinedImaging.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kCodecLimit = 10s;
constexpr auto kTextLimit = 90s;

ImagingTask taskOf(ImageCodec::Format format) {
  switch (format) {
    case ImageCodec::Format::tiff:
      return ImagingTask::encodeTiff;
    case ImageCodec::Format::bmp:
      return ImagingTask::encodeBmp;
    case ImageCodec::Format::jpeg:
      return ImagingTask::encodeJpeg;
  }
  return ImagingTask::encodeTiff;
}

ImageError nonsense() {
  return {QStringLiteral("el proceso de imágenes ha contestado algo sin sentido")};
}

bool isPng(const QByteArray& data) {
  return data.startsWith(QByteArrayView("\x89PNG\r\n\x1a\n", 8));
}

/// Whether a thumbnail has the size that was asked for, whatever the helper thinks of it.
bool fits(const QImage& thumbnail, int maxPixelSize) {
  return !thumbnail.isNull() && thumbnail.width() <= maxPixelSize && thumbnail.height() <= maxPixelSize;
}

/// One field of the reply, or the error.
template <typename Result, typename Take>
std::variant<Result, ImageError> taken(std::variant<ImagingReply, ImageError> reply, Take&& take) {
  if (const auto* const error = std::get_if<ImageError>(&reply)) return *error;
  return take(std::get<ImagingReply>(std::move(reply)));
}

}  // namespace

ConfinedImageCodec::ConfinedImageCodec(const QString& program)
    : helper_(program, ImagingSkill::codec, kCodecLimit) {}

std::variant<ImageCodec::Encoded, ImageError> ConfinedImageCodec::encodePng(const QByteArray& image,
                                                                            int maxPixelSize,
                                                                            const StopToken& stop) {
  return taken<Encoded>(
      helper_.ask({.task = ImagingTask::encodePng, .maxPixelSize = maxPixelSize, .image = image}, stop),
      [maxPixelSize](ImagingReply reply) -> std::variant<Encoded, ImageError> {
        if (!isPng(reply.data) || !fits(reply.thumbnail, maxPixelSize)) return nonsense();
        return Encoded{std::move(reply.data), std::move(reply.thumbnail)};
      });
}

std::variant<QImage, ImageError> ConfinedImageCodec::thumbnail(const QByteArray& image, int maxPixelSize,
                                                               const StopToken& stop) {
  return taken<QImage>(
      helper_.ask({.task = ImagingTask::thumbnail, .maxPixelSize = maxPixelSize, .image = image}, stop),
      [maxPixelSize](ImagingReply reply) -> std::variant<QImage, ImageError> {
        if (!fits(reply.thumbnail, maxPixelSize)) return nonsense();
        return std::move(reply.thumbnail);
      });
}

std::variant<QByteArray, ImageError> ConfinedImageCodec::convert(const QByteArray& image, Format format,
                                                                 const StopToken& stop) {
  return taken<QByteArray>(helper_.ask({.task = taskOf(format), .maxPixelSize = 0, .image = image}, stop),
                           [](ImagingReply reply) { return std::move(reply.data); });
}

ConfinedTextRecognizer::ConfinedTextRecognizer(const QString& program)
    : helper_(program, ImagingSkill::text, kTextLimit) {}

std::variant<QList<RecognizedLine>, ImageError> ConfinedTextRecognizer::recognizeText(const QByteArray& image,
                                                                                      const StopToken& stop) {
  return taken<QList<RecognizedLine>>(
      helper_.ask({.task = ImagingTask::recognizeText, .maxPixelSize = 0, .image = image}, stop),
      [](ImagingReply reply) { return std::move(reply.lines); });
}

}  // namespace nimbrel
