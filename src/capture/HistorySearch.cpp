#include "capture/HistorySearch.h"

#include <algorithm>
#include <string_view>

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

/// Looks for one term in folded texts. The first byte is searched with the C library's vector code, which for
/// the short terms that people type beats every table-driven method.
bool contains(std::string_view body, std::string_view term) {
  return body.find(term) != std::string_view::npos;
}

std::string_view view(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

bool matches(const IndexedClip& clip, const QList<QByteArray>& terms) {
  if (clip.clip.isSensitive()) return false;
  if (terms.isEmpty()) return true;
  const auto& body = clip.body();
  return body && std::all_of(terms.begin(), terms.end(),
                             [&](const QByteArray& term) { return contains(view(*body), view(term)); });
}

template <typename Accepts>
QList<ClipRef> filtered(const HistoryList& history, Accepts&& accepts) {
  QList<ClipRef> clips;
  for (qsizetype row = 0; row < history.size(); ++row) {
    const ClipRef& clip = history.at(row);
    if (accepts(*clip)) clips.append(clip);
  }
  return clips;
}

}  // namespace

const QList<ClipRef>& HistorySearch::find(const QString& query, const HistoryList& history,
                                          quint64 revision) {
  if (cache_ && cache_->query == query && cache_->revision == revision) return cache_->clips;
  const Query split = splitQuery(query);
  const auto found = split.longTerms.isEmpty() ? std::nullopt : database_.search(split.longTerms);
  const QList<QByteArray> terms = found ? split.shortTerms : split.longTerms + split.shortTerms;
  // The index may lag behind the history, so what it found counts only for clips that are there.
  cache_ = Cached{query, revision, filtered(history, [&](const IndexedClip& clip) {
                    return (!found || found->contains(clip.clip.id)) && matches(clip, terms);
                  })};
  return cache_->clips;
}

bool matchesQuery(const IndexedClip& clip, const QString& query) {
  const Query split = splitQuery(query);
  return matches(clip, split.longTerms + split.shortTerms);
}

}  // namespace nimbrel
