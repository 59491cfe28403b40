#pragma once

#include <QByteArray>
#include <QString>

namespace nimbrel {

/// The formatted variant of a text clip, as its source gave it.
struct RichContent final {
  QByteArray data;
  /// "rtf" or "html"; also the extension of the file that stores it.
  QString fileExtension;
  /// Lower-case hexadecimal SHA-256 of `data`.
  QString hash;

  bool operator==(const RichContent&) const = default;
};

}  // namespace nimbrel
