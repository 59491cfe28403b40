#include "platform/linux/imaging/helper/ImagingService.h"

#include "platform/common/ImageEncoding.h"
#include "platform/common/ImageLimits.h"
#include "platform/linux/imaging/helper/BoundedImage.h"

namespace nimbrel {
namespace {

ImagingReply failure(const QString& description) {
  ImagingReply reply;
  reply.error = description;
  return reply;
}

ImagingReply withData(const QByteArray& data) {
  if (data.isEmpty()) return failure(QStringLiteral("no se pudo codificar la imagen"));
  // Room for what stands around the data in its frame.
  constexpr qsizetype kFrameRoom = 1 << 20;
  if (data.size() > static_cast<qsizetype>(kMaxImagingFrame) - kFrameRoom)
    return failure(QStringLiteral("la imagen es demasiado grande"));
  ImagingReply reply;
  reply.data = data;
  return reply;
}

ImagingReply linesOf(const QImage& image, LineRecognizer* recognizer) {
  if (!recognizer) return failure(QStringLiteral("faltan los modelos de idioma"));
  auto lines = recognizer->recognize(image);
  if (const auto* const error = std::get_if<ImageError>(&lines)) return failure(error->description);
  ImagingReply reply;
  reply.lines = std::get<QList<RecognizedLine>>(std::move(lines));
  return reply;
}

}  // namespace

ImagingReply answer(const ImagingRequest& request, LineRecognizer* recognizer) {
  const auto decoded = decodeImage(request.image);
  if (const auto* const error = std::get_if<ImageError>(&decoded)) return failure(error->description);
  const QImage& image = std::get<QImage>(decoded);
  ImagingReply reply;
  switch (request.task) {
    case ImagingTask::encodePng:
      reply = withData(encodePng(image));
      if (request.maxPixelSize > 0) reply.thumbnail = thumbnailOf(image, request.maxPixelSize);
      return reply;
    case ImagingTask::thumbnail:
      reply.thumbnail = thumbnailOf(image, request.maxPixelSize);
      return reply;
    case ImagingTask::encodeTiff:
      return withData(encodeImage(image, "tiff"));
    case ImagingTask::encodeBmp:
      return withData(encodeImage(onWhite(image), "bmp"));
    case ImagingTask::encodeJpeg:
      return withData(encodeImage(onWhite(image), "jpeg"));
    case ImagingTask::recognizeText:
      return linesOf(image, recognizer);
  }
  return reply;
}

}  // namespace nimbrel
