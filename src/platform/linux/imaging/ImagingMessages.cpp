#include "platform/linux/imaging/ImagingMessages.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>
#include <cmath>
#include <cstring>

namespace nimbrel {
namespace {

constexpr auto kStreamVersion = QDataStream::Qt_6_4;
constexpr qint32 kMaxLines = 10'000;
/// Of all lines together, in bytes; no picture holds a book.
constexpr qsizetype kMaxLineBytes = 1'000'000;
constexpr qsizetype kMaxErrorLength = 500;
constexpr int kBytesPerPixel = 4;

void putThumbnail(QDataStream& stream, const QImage& thumbnail) {
  const QImage image = thumbnail.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  stream << qint32(image.width()) << qint32(image.height());
  for (int y = 0; y < image.height(); ++y)
    stream.writeRawData(reinterpret_cast<const char*>(image.constScanLine(y)),
                        image.width() * kBytesPerPixel);
}

/// Raw pixels, because no decoder of ours ever runs over what the helper says.
bool takeThumbnail(QDataStream& stream, QImage& thumbnail) {
  qint32 width = 0;
  qint32 height = 0;
  stream >> width >> height;
  if (stream.status() != QDataStream::Ok || width < 0 || height < 0) return false;
  if (width == 0 || height == 0) return true;
  if (width > kMaxThumbnailSide || height > kMaxThumbnailSide) return false;
  if (stream.device()->bytesAvailable() < qint64(width) * height * kBytesPerPixel) return false;
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return false;
  for (int y = 0; y < height; ++y) {
    const int length = width * kBytesPerPixel;
    if (stream.readRawData(reinterpret_cast<char*>(image.scanLine(y)), length) != length) return false;
  }
  thumbnail = image;
  return true;
}

bool isSound(const QRectF& box) {
  return std::isfinite(box.x()) && std::isfinite(box.y()) && std::isfinite(box.width()) &&
         std::isfinite(box.height());
}

bool takeLines(QDataStream& stream, QList<RecognizedLine>& lines) {
  qint32 count = 0;
  stream >> count;
  if (count < 0 || count > kMaxLines) return false;
  qsizetype bytes = 0;
  for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
    QByteArray text;
    RecognizedLine line;
    stream >> text >> line.box;
    line.text = QString::fromUtf8(text);
    bytes += text.size();
    if (!isSound(line.box) || bytes > kMaxLineBytes) return false;
    lines.append(line);
  }
  return stream.status() == QDataStream::Ok;
}

}  // namespace

QByteArray encodeRequest(const ImagingRequest& request) {
  QByteArray frame;
  QDataStream stream(&frame, QIODevice::WriteOnly);
  stream.setVersion(kStreamVersion);
  stream << quint8(request.task) << request.maxPixelSize << request.image;
  return frame;
}

std::optional<ImagingRequest> decodeRequest(const QByteArray& frame) {
  QDataStream stream(frame);
  stream.setVersion(kStreamVersion);
  quint8 task = 0;
  ImagingRequest request;
  stream >> task >> request.maxPixelSize >> request.image;
  if (stream.status() != QDataStream::Ok || !stream.atEnd()) return std::nullopt;
  if (task < quint8(ImagingTask::encodePng) || task > quint8(ImagingTask::recognizeText)) return std::nullopt;
  if (request.maxPixelSize < 0 || request.maxPixelSize > kMaxThumbnailSide) return std::nullopt;
  request.task = ImagingTask(task);
  return request;
}

QByteArray encodeReply(const ImagingReply& reply) {
  QByteArray frame;
  QDataStream stream(&frame, QIODevice::WriteOnly);
  stream.setVersion(kStreamVersion);
  stream << reply.error.left(kMaxErrorLength).toUtf8() << reply.data;
  putThumbnail(stream, reply.thumbnail);
  const qsizetype count = qMin<qsizetype>(reply.lines.size(), kMaxLines);
  stream << qint32(count);
  for (qsizetype i = 0; i < count; ++i)
    stream << reply.lines.at(i).text.toUtf8() << reply.lines.at(i).box;
  return frame;
}

std::optional<ImagingReply> decodeReply(const QByteArray& frame) {
  QDataStream stream(frame);
  stream.setVersion(kStreamVersion);
  ImagingReply reply;
  QByteArray error;
  stream >> error >> reply.data;
  if (stream.status() != QDataStream::Ok || error.size() > kMaxErrorLength * 4) return std::nullopt;
  reply.error = QString::fromUtf8(error);
  if (!takeThumbnail(stream, reply.thumbnail) || !takeLines(stream, reply.lines)) return std::nullopt;
  if (!stream.atEnd()) return std::nullopt;
  return reply;
}

QByteArray frameHeader(const QByteArray& frame) {
  QByteArray header(kFrameHeaderBytes, Qt::Uninitialized);
  qToLittleEndian(static_cast<quint32>(frame.size()), header.data());
  return header;
}

std::optional<qsizetype> announcedLength(const QByteArray& header) {
  const auto length = qFromLittleEndian<quint32>(header.constData());
  if (length > kMaxImagingFrame) return std::nullopt;
  return static_cast<qsizetype>(length);
}

}  // namespace nimbrel
