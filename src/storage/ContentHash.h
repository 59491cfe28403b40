#pragma once

#include <QByteArrayView>
#include <QString>

namespace nimbrel {

/// SHA-256 (FIPS 180-4) as 64 lower-case hexadecimal digits. Any thread.
[[nodiscard]] QString sha256Hex(QByteArrayView data);

}  // namespace nimbrel
