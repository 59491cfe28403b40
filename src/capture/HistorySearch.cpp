#include "capture/HistorySearch.h"

#include <QSet>
#include <algorithm>
#include <future>
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
  QSet<QByteArray> seen;
  for (const QByteArray& term : searchTerms(foldedText(text))) {
    if (seen.contains(term)) continue;
    seen.insert(term);
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

/// How many clips are looked at before the search asks whether it is still wanted.
constexpr qsizetype kStride = 1024;
/// So many clips are worth a second thread.
constexpr qsizetype kWorthSharing = 4096;
/// How far ahead a clip is fetched, so that it has come when it is looked at.
constexpr qsizetype kFetchAhead = 16;

void fetch(const HistorySnapshot& history, qsizetype row) {
  if (row + kFetchAhead < history.size()) history.at(row + kFetchAhead)->fetch();
  if (row + kFetchAhead / 2 < history.size()) history.at(row + kFetchAhead / 2)->fetchBody();
}

/// The accepted clips of a part of the history.
template <typename Accepts>
FoundClips scan(const HistorySnapshot& history, qsizetype from, qsizetype to, const Accepts& accepts,
                const StopToken& stop) {
  FoundClips found;
  for (qsizetype row = from; row < to; ++row) {
    if (row % kStride == 0 && stop.stopRequested()) break;
    fetch(history, row);
    const ClipRef& clip = history.at(row);
    if (!accepts(*clip)) continue;
    if (clip->clip.isImage()) found.imageRows.append(static_cast<int>(found.clips.size()));
    found.clips.append(clip);
  }
  return found;
}

void append(FoundClips& found, const FoundClips& more) {
  const int before = static_cast<int>(found.clips.size());
  for (const int row : more.imageRows)
    found.imageRows.append(before + row);
  found.clips += more.clips;
}

}  // namespace

FoundClips findClips(const ClipQuery& query, const HistorySnapshot& history, ClipDatabase& database,
                     const StopToken& stop) {
  const Query split = splitQuery(query.text);
  const auto indexed = split.longTerms.isEmpty() ? std::nullopt : database.search(split.longTerms);
  const QList<QByteArray> terms = indexed ? split.shortTerms : split.longTerms + split.shortTerms;
  const auto accepts = [&](const IndexedClip& clip) {
    // The index may lag behind the history, so what it found counts only for clips that are there.
    return (!indexed || indexed->contains(clip.clip.id)) && passesFilter(clip.clip, query.filter) &&
           (query.text.isEmpty() || matches(clip, terms));
  };
  const qsizetype size = history.size();
  if (size < kWorthSharing) return scan(history, 0, size, accepts, stop);
  // What takes time is waiting for memory, which two can do at once.
  auto second = std::async(std::launch::async, [&] { return scan(history, size / 2, size, accepts, stop); });
  FoundClips found = scan(history, 0, size / 2, accepts, stop);
  append(found, second.get());
  return found;
}

bool matchesQuery(const IndexedClip& clip, const ClipQuery& query) {
  if (!passesFilter(clip.clip, query.filter)) return false;
  if (query.text.isEmpty()) return true;
  const Query split = splitQuery(query.text);
  return matches(clip, split.longTerms + split.shortTerms);
}

QList<ClipRef> clipsMatching(const QString& text, const HistorySnapshot& history, ClipDatabase& database) {
  // An empty text has no terms, which is not the same as no text: secrets are not found by it either.
  const QString looked = text.isEmpty() ? QStringLiteral(" ") : text;
  return findClips({looked, {}}, history, database).clips;
}

QList<ClipRef> clipsOf(const QList<QUuid>& ids, const HistoryList& history) {
  QList<ClipRef> clips;
  clips.reserve(ids.size());
  for (const QUuid& id : ids) {
    if (const auto row = history.rowOf(id)) clips.append(history.at(*row));
  }
  return clips;
}

QList<ClipRef> HistorySearch::find(const QString& text, const HistoryList& history, quint64 revision) {
  if (!cache_ || cache_->text != text || cache_->revision != revision) look(text, history, revision);
  return clipsOf(cache_->ids, history);
}

void HistorySearch::look(const QString& text, const HistoryList& history, quint64 revision) {
  cache_ = Cached{text, revision, {}};
  for (const ClipRef& clip : clipsMatching(text, history.snapshot(), database_))
    cache_->ids.append(clip->clip.id);
}

}  // namespace nimbrel
