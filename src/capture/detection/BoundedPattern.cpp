#include "capture/detection/BoundedPattern.h"

#include <algorithm>

#include "capture/model/CodePoints.h"

namespace nimbrel {
namespace {

/// For one attempt: ten times what any credential, card or account number asks for, and still only a fraction
/// of a millisecond.
constexpr int kMaxSteps = 100'000;

/// The text with a replacement for each single surrogate, which no pattern can be matched against.
QString withoutSingleSurrogates(QStringView text) {
  QString repaired = text.toString();
  for (qsizetype i = 0; i < repaired.size();) {
    const CodePoint point = codePointAt(repaired, i);
    if (QChar::isSurrogate(point.value)) repaired[i] = QChar::ReplacementCharacter;
    i += point.length;
  }
  return repaired;
}

}  // namespace

BoundedPattern::BoundedPattern(const QString& pattern)
    : expression_(QStringLiteral("(*LIMIT_MATCH=%1)(*LIMIT_DEPTH=%1)").arg(kMaxSteps) + pattern) {
  expression_.optimize();
}

BoundedPattern::Match BoundedPattern::search(QStringView text, qsizetype from) const {
  if (text.isValidUtf16()) return searchValid(text, from);
  return searchValid(withoutSingleSurrogates(text), from);
}

bool BoundedPattern::anyMatch(QStringView text, qsizetype from,
                              const std::function<bool(QStringView match)>& accept) const {
  if (!text.isValidUtf16()) return anyMatch(withoutSingleSurrogates(text), from, accept);
  while (true) {
    const Match match = searchValid(text, from);
    if (match.outcome != Outcome::found) return false;
    if (accept(text.sliced(match.offset, match.length))) return true;
    // An empty match would be found again.
    from = match.offset + std::max<qsizetype>(match.length, 1);
  }
}

BoundedPattern::Match BoundedPattern::searchValid(QStringView text, qsizetype from) const {
  if (!isValid() || from > text.size()) return {};
  // Surrogates have been looked at, once for all searches in the text.
  constexpr auto kUnchecked = QRegularExpression::DontCheckSubjectStringMatchOption;
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
  const auto match = expression_.matchView(text, from, QRegularExpression::NormalMatch, kUnchecked);
#else
  const auto match = expression_.match(text, from, QRegularExpression::NormalMatch, kUnchecked);
#endif
  if (!match.isValid()) return {.outcome = Outcome::gaveUp};
  if (!match.hasMatch()) return {};
  return {.outcome = Outcome::found, .offset = match.capturedStart(), .length = match.capturedLength()};
}

}  // namespace nimbrel
