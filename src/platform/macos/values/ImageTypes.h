#pragma once

#include <QString>

/// The images that ImageIO is let near.
namespace nimbrel::macos {

/// Whether images of a uniform type are decoded: the raster formats that programs copy, no documents, no
/// camera's raw files.
[[nodiscard]] bool isDecodable(const QString& type);

}  // namespace nimbrel::macos
