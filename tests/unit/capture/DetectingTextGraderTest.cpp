#include "capture/DetectingTextGrader.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

const QString kLetter = u"Tu tarjeta es\n4111 1111 1111 1111\nSaludos"_s;

TEST(DetectingTextGrader, TellsGradesInTheOrderOfTheTexts) {
  DetectingTextGrader grader;
  QList<SensitivityLevel> levels;
  const auto remember = [&](SensitivityLevel level) { levels.append(level); };
  grader.classifyText(u"uno\ndos\n"_s.repeated(10'000), std::nullopt, remember);
  grader.classifyText(kLetter, std::nullopt, remember);
  grader.classifyText(u"123456"_s, std::nullopt, remember);
  grader.classifyText(u"123456"_s, u"com.authy"_s, remember);
  EXPECT_TRUE(levels.isEmpty());
  grader.finish();
  using enum SensitivityLevel;
  EXPECT_EQ(levels, (QList<SensitivityLevel>{none, hard, soft, hard}));
}

TEST(DetectingTextGrader, TellsNothingOnceItIsGone) {
  bool told = false;
  {
    DetectingTextGrader grader;
    grader.classifyText(kLetter, std::nullopt, [&](SensitivityLevel) { told = true; });
  }
  QCoreApplication::processEvents();
  EXPECT_FALSE(told);
}

TEST(DetectingTextGrader, GradesAWholeTextAtOnce) {
  const DetectingTextGrader grader;
  EXPECT_EQ(grader.classify(u"123456"_s, std::nullopt, true), SensitivityLevel::soft);
  EXPECT_EQ(grader.classify(u"123456"_s, std::nullopt, false), SensitivityLevel::none);
}

}  // namespace
}  // namespace nimbrel
