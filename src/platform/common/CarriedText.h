#pragma once

#include <QString>

namespace nimbrel {

/// A text for whoever takes a null character for its end, as D-Bus and C do.
[[nodiscard]] inline QString carriedText(QString text) {
  return text.replace(QChar(), QChar(QChar::ReplacementCharacter));
}

}  // namespace nimbrel
