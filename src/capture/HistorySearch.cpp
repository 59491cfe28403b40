#include "capture/HistorySearch.h"

#include <QByteArrayMatcher>
#include <algorithm>
#include <vector>

#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

/// The shortest term, in characters, that an index of trigrams can answer.
constexpr qsizetype kIndexedTermCharacters = 3;

struct Query {
  QList<QByteArray> longTerms;
  QList<QByteArray> shortTerms;
};

Query splitQuery(const QString& text) {
  Query query;
  for (const QByteArray& term : searchTerms(foldedText(text))) {
    const bool isLong = hasCharacters(QString::fromUtf8(term), kIndexedTermCharacters);
    (isLong ? query.longTerms : query.shortTerms).append(term);
  }
  return query;
}

/// Matches bodies against terms, all of which must occur.
class TermMatcher final {
 public:
  explicit TermMatcher(const QList<QByteArray>& terms) : matchers_(terms.begin(), terms.end()) {}

  [[nodiscard]] bool matches(const IndexedClip& clip) const {
    if (matchers_.empty()) return true;
    const auto& body = clip.body();
    return body && std::all_of(matchers_.begin(), matchers_.end(),
                               [&](const QByteArrayMatcher& matcher) { return matcher.indexIn(*body) >= 0; });
  }

 private:
  std::vector<QByteArrayMatcher> matchers_;
};

QSet<QUuid> matchInMemory(const HistoryList& history, const QList<QByteArray>& terms) {
  const TermMatcher matcher(terms);
  QSet<QUuid> ids;
  for (qsizetype row = 0; row < history.size(); ++row) {
    const IndexedClip& clip = *history.at(row);
    if (!clip.clip.isSensitive() && matcher.matches(clip)) ids.insert(clip.clip.id);
  }
  return ids;
}

/// Keeps what the index found and the short terms match too. The index may lag behind the history, so an id counts
/// only while its clip is there.
QSet<QUuid> narrow(const HistoryList& history, const QSet<QUuid>& found, const QList<QByteArray>& shortTerms) {
  const TermMatcher matcher(shortTerms);
  QSet<QUuid> ids;
  for (qsizetype row = 0; row < history.size(); ++row) {
    const IndexedClip& clip = *history.at(row);
    if (found.contains(clip.clip.id) && !clip.clip.isSensitive() && matcher.matches(clip)) ids.insert(clip.clip.id);
  }
  return ids;
}

}  // namespace

const QSet<QUuid>& HistorySearch::find(const QString& query, const HistoryList& history, quint64 revision) {
  if (cache_ && cache_->query == query && cache_->revision == revision) return cache_->ids;
  const Query split = splitQuery(query);
  const auto found = split.longTerms.isEmpty() ? std::nullopt : database_.search(split.longTerms);
  cache_ = Cached{query, revision,
                  found ? narrow(history, *found, split.shortTerms)
                        : matchInMemory(history, split.longTerms + split.shortTerms)};
  return cache_->ids;
}

}  // namespace nimbrel
