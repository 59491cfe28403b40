#pragma once

#include <QList>
#include <QRectF>
#include <QSize>
#include <QString>

#include "platform/TextRecognizer.h"

/// Lines of text as Vision finds them.
namespace nimbrel::macos {

/// The best reading of one line, in a box whose sides are shares of the image's and which is counted from the
/// image's bottom left corner.
struct TextObservation final {
  QString text;
  QRectF box;
};

/// The lines by the height of their middles, the topmost first, equal ones in their order, in the image's
/// pixels from its top left corner.
[[nodiscard]] QList<RecognizedLine> linesTopFirst(QList<TextObservation> observations, const QSize& image);

}  // namespace nimbrel::macos
