#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>
#include <optional>

#include "platform/TextRecognizer.h"

/// What the program and its imaging helper say to each other: frames of a length (four bytes, little endian)
/// and that many bytes. Each side takes the other's bytes for hostile: a frame that is not exactly one
/// message is none.
namespace nimbrel {

enum class ImagingTask : quint8 {
  encodePng = 1,
  thumbnail,
  encodeTiff,
  encodeBmp,
  encodeJpeg,
  recognizeText
};

struct ImagingRequest final {
  ImagingTask task = ImagingTask::thumbnail;
  /// The side of the thumbnail's square, for tasks that make one.
  qint32 maxPixelSize = 0;
  QByteArray image;

  bool operator==(const ImagingRequest&) const = default;
};

struct ImagingReply final {
  /// What went wrong; empty when nothing did.
  QString error;
  /// An encoded image.
  QByteArray data;
  /// Premultiplied ARGB, 32 bits.
  QImage thumbnail;
  QList<RecognizedLine> lines;

  bool operator==(const ImagingReply&) const = default;
};

/// The longest frames that either side accepts: a stored image, which may be larger than the copied one, and
/// the largest uncompressed form of it.
inline constexpr quint32 kMaxImagingFrame = 320U << 20U;

/// The largest side of a thumbnail.
inline constexpr qint32 kMaxThumbnailSide = 4096;

[[nodiscard]] QByteArray encodeRequest(const ImagingRequest& request);
[[nodiscard]] std::optional<ImagingRequest> decodeRequest(const QByteArray& frame);

[[nodiscard]] QByteArray encodeReply(const ImagingReply& reply);
[[nodiscard]] std::optional<ImagingReply> decodeReply(const QByteArray& frame);

/// The length before a frame.
[[nodiscard]] QByteArray frameHeader(const QByteArray& frame);
inline constexpr qsizetype kFrameHeaderBytes = 4;
/// The length that a header of `kFrameHeaderBytes` announces; nothing when it is beyond the limit.
[[nodiscard]] std::optional<qsizetype> announcedLength(const QByteArray& header);

}  // namespace nimbrel
