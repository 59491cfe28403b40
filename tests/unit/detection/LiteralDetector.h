#pragma once

#include <unicode/regex.h>

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "capture/model/SensitivityLevel.h"

namespace nimbrel::testing {

/// The rules of detection one after the other, exactly as they are defined and with no thought of speed:
/// whole characters (grapheme clusters) instead of code units, all expressions tried in turn on every text,
/// another engine for them than the product's. What the product must agree with. One thread.
class LiteralDetector {
 public:
  LiteralDetector();

  SensitivityLevel classify(const QString& text, const std::optional<QString>& sourceBundleID,
                            bool detectCodes);
  SensitivityLevel classifyText(const QString& text, const std::optional<QString>& sourceBundleID);
  bool passesLuhn(const QString& digits);
  bool isValidIBAN(const QString& candidate);
  bool containsCardNumber(const QString& line);
  bool containsIBAN(const QString& line);

 private:
  using Expression = std::unique_ptr<icu::RegexMatcher>;

  static QStringList matches(icu::RegexMatcher& expression, const QString& text);
  QString numbersIn(const QString& text);

  std::vector<Expression> tokens_;
  Expression card_;
  Expression iban_;
};

}  // namespace nimbrel::testing
