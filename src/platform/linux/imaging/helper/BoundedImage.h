#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <variant>

#include "platform/ImageCodec.h"

/// Images from bytes that nobody vouches for.
namespace nimbrel {

/// Loads the decoders of all accepted formats, so that none has to be looked for once files are out of reach.
void loadImageDecoders();

/// Decodes the first picture of a PNG, JPEG, TIFF, WebP, GIF, BMP, ICO or PNM and turns it upright. The
/// format is told by the content. Size and memory are checked by the header before any pixel is decoded.
[[nodiscard]] std::variant<QImage, ImageError> decodeImage(const QByteArray& bytes);

}  // namespace nimbrel
