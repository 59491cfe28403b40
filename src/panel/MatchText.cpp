#include "panel/MatchText.h"

#include <QChar>
#include <algorithm>
#include <optional>

#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

/// As far as search looks into a text.
constexpr qsizetype kSearchedCharacters = 50'000;
/// How much of a text is looked through at a time, in UTF-16 units.
constexpr qsizetype kStretch = 4096;
/// What is shown before and after a match, in UTF-16 units.
constexpr qsizetype kBefore = 24;
constexpr qsizetype kAfter = 60;
constexpr QChar kEllipsis(0x2026);

/// A text folded letter by letter, and where each byte of that comes from.
struct FoldedText {
  explicit FoldedText(QStringView text) {
    folded.reserve(text.size());
    origins.reserve(text.size() + 1);
    for (qsizetype at = 0; at < text.size();) {
      const qsizetype units =
          text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate() ? 2 : 1;
      add(text.sliced(at, units), at);
      at += units;
    }
    origins.append(static_cast<qint32>(text.size()));
  }

  QByteArray folded;
  /// For each byte the letter it was made of, and the text's end after the last.
  QList<qint32> origins;

 private:
  void add(QStringView letter, qsizetype at) {
    const char16_t unit = letter.front().unicode();
    if (unit > 0 && unit < 0x80) {
      const bool upper = unit >= u'A' && unit <= u'Z';
      folded.append(static_cast<char>(upper ? unit + 32 : unit));
    } else {
      folded.append(foldedText(letter));
    }
    while (origins.size() < folded.size())
      origins.append(static_cast<qint32>(at));
  }
};

/// One range for those that touch or overlap.
QList<TextRange> merged(QList<TextRange> ranges) {
  std::sort(ranges.begin(), ranges.end(),
            [](const TextRange& a, const TextRange& b) { return a.start < b.start; });
  QList<TextRange> apart;
  for (const TextRange& range : ranges) {
    if (!apart.isEmpty() && range.start <= apart.last().end())
      apart.last().length = std::max(apart.last().end(), range.end()) - apart.last().start;
    else
      apart.append(range);
  }
  return apart;
}

/// The letters that a run of folded bytes was made of.
TextRange originOf(const FoldedText& text, qsizetype at, qsizetype bytes) {
  const qsizetype start = text.origins.at(at);
  const qsizetype last = text.origins.at(at + bytes - 1);
  // A letter may have become several bytes, and marks behind it none.
  qsizetype next = at + bytes;
  while (text.origins.at(next) == last && next + 1 < text.origins.size())
    ++next;
  return {start, text.origins.at(next) - start};
}

/// Whether a stretch of text holds a term: folded all at once, which takes far less than letter by letter.
bool holdsMatch(QStringView stretch, const QList<QByteArray>& terms) {
  const QByteArray folded = foldedText(stretch);
  return std::any_of(terms.begin(), terms.end(),
                     [&](const QByteArray& term) { return folded.contains(term); });
}

/// The first letters that match a term, looked for in stretches that overlap by more than a match is long.
std::optional<TextRange> firstMatch(QStringView text, const QList<QByteArray>& terms) {
  qsizetype longest = 0;
  for (const QByteArray& term : terms)
    longest = std::max(longest, term.size());
  const qsizetype overlap = 4 * longest;
  const qsizetype step = std::max(kStretch, overlap);
  for (qsizetype at = 0; at < text.size(); at += step) {
    const QStringView stretch = text.sliced(at, std::min(step + overlap, text.size() - at));
    if (!holdsMatch(stretch, terms)) continue;
    const QList<TextRange> ranges = matchRanges(stretch, terms);
    if (!ranges.isEmpty()) return TextRange{at + ranges.first().start, ranges.first().length};
  }
  return std::nullopt;
}

/// A cut never goes through a letter or the marks on it.
qsizetype cleanCut(const QString& text, qsizetype at) {
  while (at > 0 && at < text.size() &&
         (text.at(at).isLowSurrogate() || text.at(at).isMark() || text.at(at) == QChar(0x200d)))
    --at;
  return at;
}

}  // namespace

QList<TextRange> matchRanges(QStringView text, const QList<QByteArray>& terms) {
  const FoldedText folded(text);
  QList<TextRange> ranges;
  for (const QByteArray& term : terms) {
    if (term.isEmpty()) continue;
    for (qsizetype at = folded.folded.indexOf(term); at >= 0;
         at = folded.folded.indexOf(term, at + term.size()))
      ranges.append(originOf(folded, at, term.size()));
  }
  return merged(ranges);
}

QString excerptOf(const QString& text, const QList<QByteArray>& terms) {
  const QStringView searched = firstCharacters(text, kSearchedCharacters);
  const auto first = firstMatch(searched, terms);
  if (!first) return {};
  const qsizetype start = cleanCut(text, std::max<qsizetype>(0, first->start - kBefore));
  const qsizetype end = cleanCut(text, std::min(searched.size(), first->end() + kAfter));
  const QString around = text.sliced(start, std::max(end, first->end()) - start).simplified();
  return start > 0 ? kEllipsis + (u' ' + around) : around;
}

}  // namespace nimbrel
