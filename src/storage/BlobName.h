#pragma once

#include <QString>
#include <QUuid>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// A name for a new file beside the database, which no other has.
[[nodiscard]] inline QString newBlobName(const QString& extension) {
  return clipIdText(QUuid::createUuid()) + u'.' + extension;
}

}  // namespace nimbrel
