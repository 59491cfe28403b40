#include <cstdlib>

#include "capture/detection/AccountNumbers.h"
#include "capture/detection/SensitiveDetector.h"
#include "fuzz/FuzzText.h"
#include "unit/detection/LiteralDetector.h"

/// Any text, graded as a whole and with its lines: the grades must be those of the literal rules.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nimbrel;
  static testing::LiteralDetector literal;
  const QString text = testing::fuzzText(data, size);
  const auto source = size % 2 == 0 ? std::optional(QStringLiteral("com.authy")) : std::nullopt;
  for (const bool detectCodes : {false, true}) {
    if (SensitiveDetector::classify(text, source, detectCodes) != literal.classify(text, source, detectCodes))
      std::abort();
  }
  if (SensitiveDetector::classifyText(text, source) != literal.classifyText(text, source)) std::abort();
  if (passesLuhn(text) != literal.passesLuhn(text)) std::abort();
  if (isValidIBAN(text) != literal.isValidIBAN(text)) std::abort();
  if (containsCardNumber(text) != literal.containsCardNumber(text)) std::abort();
  if (containsIBAN(text) != literal.containsIBAN(text)) std::abort();
  return 0;
}
