#include "platform/macos/values/RecognizedText.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace nimbrel::macos {
namespace {

using namespace Qt::StringLiterals;

QStringList textsOf(const QList<RecognizedLine>& lines) {
  QStringList texts;
  for (const RecognizedLine& line : lines)
    texts.append(line.text);
  return texts;
}

TEST(RecognizedText, PutsTheTopmostLineFirst) {
  const auto lines =
      linesTopFirst({{u"abajo"_s, {0.1, 0.1, 0.5, 0.1}}, {u"arriba"_s, {0.1, 0.7, 0.5, 0.1}}}, {200, 100});
  EXPECT_EQ(textsOf(lines), (QStringList{u"arriba"_s, u"abajo"_s}));
}

TEST(RecognizedText, CountsPixelsFromTheTopLeftCorner) {
  const auto lines = linesTopFirst({{u"a"_s, {0.25, 0.5, 0.5, 0.25}}}, {400, 200});
  EXPECT_EQ(lines.first().box, QRectF(100, 50, 200, 50));
}

TEST(RecognizedText, KeepsTheOrderOfLinesAtTheSameHeight) {
  QList<TextObservation> observations;
  // The same middle, as different sums.
  for (int i = 1; i <= 9; ++i) {
    const double height = 0.1 * i;
    observations.append({QString::number(i), {0.0, 0.5 - height / 2, 0.1, height}});
  }
  auto lines = linesTopFirst(observations, {1237, 791});
  // Whoever sorts them once more by their middles finds them in order.
  std::stable_sort(lines.begin(), lines.end(),
                   [](const auto& a, const auto& b) { return a.box.center().y() < b.box.center().y(); });
  for (int i = 1; i <= 9; ++i) {
    EXPECT_EQ(lines.at(i - 1).text, QString::number(i));
  }
}

TEST(RecognizedText, GivesNoLinesForAnImageWithoutText) {
  EXPECT_TRUE(linesTopFirst({}, {10, 10}).isEmpty());
}

}  // namespace
}  // namespace nimbrel::macos
