#pragma once

#include <QRegularExpression>
#include <QString>
#include <functional>

namespace nimbrel {

/// A regular expression that gives up rather than run away: each attempt at a match may take a fixed number
/// of steps, whatever the text. Matching is case-sensitive, `^` and `$` stand for the ends of the whole text,
/// and a single surrogate is taken for U+FFFD. Any thread.
class BoundedPattern final {
 public:
  enum class Outcome {
    found,
    notFound,
    /// The text asked for more steps than allowed.
    gaveUp,
  };

  struct Match final {
    Outcome outcome = Outcome::notFound;
    /// Where the match begins and how long it is, in UTF-16 units of the text.
    qsizetype offset = 0;
    qsizetype length = 0;
  };

  /// In the syntax of PCRE.
  explicit BoundedPattern(const QString& pattern);

  /// Whether the pattern compiled; one that did not finds nothing.
  [[nodiscard]] bool isValid() const { return expression_.isValid(); }

  /// The first match that begins at `from` or later.
  [[nodiscard]] Match search(QStringView text, qsizetype from = 0) const;

  /// Whether any of the matches from `from` on, each behind the one before, is accepted.
  [[nodiscard]] bool anyMatch(QStringView text, qsizetype from,
                              const std::function<bool(QStringView match)>& accept) const;

  /// Whether there is a match anywhere; no when the search gave up.
  [[nodiscard]] bool matches(QStringView text) const { return search(text).outcome == Outcome::found; }

 private:
  /// `search` in a text without single surrogates.
  [[nodiscard]] Match searchValid(QStringView text, qsizetype from) const;

  QRegularExpression expression_;
};

}  // namespace nimbrel
