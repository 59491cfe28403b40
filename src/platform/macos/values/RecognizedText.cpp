#include "platform/macos/values/RecognizedText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nimbrel::macos {
namespace {

/// Middles to a fraction of a pixel that doubles add without rounding, so that equal ones stay equal in
/// whoever's arithmetic.
double snapped(double pixels) {
  constexpr double kSteps = 256;
  return std::round(pixels * kSteps) / kSteps;
}

RecognizedLine lineOf(const TextObservation& observation, const QSize& image) {
  const double height = 2 * snapped(observation.box.height() * image.height() / 2);
  const double middle = snapped((1.0 - observation.box.center().y()) * image.height());
  return {observation.text, QRectF(observation.box.x() * image.width(), middle - height / 2,
                                   observation.box.width() * image.width(), height)};
}

}  // namespace

QList<RecognizedLine> linesTopFirst(QList<TextObservation> observations, const QSize& image) {
  std::stable_sort(observations.begin(), observations.end(),
                   [](const TextObservation& a, const TextObservation& b) {
                     return a.box.center().y() > b.box.center().y();
                   });
  QList<RecognizedLine> lines;
  for (const TextObservation& observation : std::as_const(observations))
    lines.append(lineOf(observation, image));
  return lines;
}

}  // namespace nimbrel::macos
