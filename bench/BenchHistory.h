#pragma once

#include <QList>
#include <QString>

#include "capture/model/ClipItem.h"

namespace nimbrel::bench {

/// So many different pinned clips of about 200 bytes, Spanish and English, with accents, newest first; the
/// same at every call. Pinned, because unpinned ones are trimmed to the capacity.
[[nodiscard]] QList<ClipItem> makeClips(int count);

}  // namespace nimbrel::bench
