#include <gmock/gmock.h>

#include "capture/detection/AccountNumbers.h"
#include "capture/detection/SensitiveDetector.h"
#include "unit/detection/LiteralDetector.h"
#include "unit/detection/SecretTexts.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kTexts = 20'000;
#else
constexpr int kTexts = 350'000;
#endif

/// The text as it can be pasted into a test; of a long one, its end.
std::string shown(const QString& text) {
  QString escaped = u"%1 units: "_s.arg(text.size());
  for (const QChar c : text.last(std::min<qsizetype>(text.size(), 500)))
    escaped += c >= u' ' && c < u'\x7f' ? QString(c) : u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
  return escaped.toStdString();
}

/// How often each grade came up, to see that the texts are worth grading.
struct Tally {
  int none = 0;
  int soft = 0;
  int hard = 0;

  void count(SensitivityLevel level) {
    ++(level == SensitivityLevel::none ? none : level == SensitivityLevel::soft ? soft : hard);
  }
};

/// Each seed in a test of its own, so that they can be told apart and run side by side.
class DetectorAgreement : public ::testing::TestWithParam<unsigned> {
 protected:
  testing::LiteralDetector literal;
  testing::SecretTexts texts{GetParam()};
};

TEST_P(DetectorAgreement, GradesWholeTextsAsTheRulesSay) {
  Tally tally;
  for (int i = 0; i < kTexts; ++i) {
    const QString text = texts.text();
    const auto source = i % 3 == 0 ? std::optional(u"com.authy"_s) : std::nullopt;
    const auto expected = literal.classify(text, source, i % 2 == 0);
    tally.count(expected);
    ASSERT_EQ(SensitiveDetector::classify(text, source, i % 2 == 0), expected) << shown(text);
  }
  EXPECT_GT(tally.none, kTexts / 10);
  EXPECT_GT(tally.soft, kTexts / 1000);
  EXPECT_GT(tally.hard, kTexts / 20);
}

TEST_P(DetectorAgreement, GradesLinesAsTheRulesSay) {
  Tally tally;
  for (int i = 0; i < kTexts / 2; ++i) {
    // Now and then a text that may have one line only.
    const QString text = i % 8 == 0 ? texts.text() : texts.text() + u'\n' + texts.piece();
    const auto source = i % 2 == 0 ? std::optional(u"com.apple.mail"_s) : std::nullopt;
    const auto expected = literal.classifyText(text, source);
    tally.count(expected);
    ASSERT_EQ(SensitiveDetector::classifyText(text, source), expected) << shown(text);
  }
  EXPECT_GT(tally.none, kTexts / 20);
  EXPECT_GT(tally.hard, kTexts / 20);
}

TEST_P(DetectorAgreement, ChecksNumbersAsTheRulesSay) {
  for (int i = 0; i < kTexts; ++i) {
    const QString text = texts.piece();
    ASSERT_EQ(passesLuhn(text), literal.passesLuhn(text)) << shown(text);
    ASSERT_EQ(isValidIBAN(text), literal.isValidIBAN(text)) << shown(text);
    const QString line = text + u' ' + texts.piece();
    ASSERT_EQ(containsCardNumber(line), literal.containsCardNumber(line)) << shown(line);
    ASSERT_EQ(containsIBAN(line), literal.containsIBAN(line)) << shown(line);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, DetectorAgreement, ::testing::Range(1U, 4U));

}  // namespace
}  // namespace nimbrel
