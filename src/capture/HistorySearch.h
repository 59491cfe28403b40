#pragma once

#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

#include "capture/HistoryList.h"
#include "capture/model/ClipFilter.h"
#include "platform/StopToken.h"
#include "storage/ClipDatabase.h"

namespace nimbrel {

/// What is looked for: the terms of a text, among the clips that pass a filter.
struct ClipQuery final {
  QString text;
  ClipFilter filter;

  /// Whether every clip of the history is an answer.
  [[nodiscard]] bool matchesAll() const { return text.isEmpty() && filter == ClipFilter{}; }

  bool operator==(const ClipQuery&) const = default;
};

/// What was found, in history order.
struct FoundClips final {
  QList<ClipRef> clips;
  /// The rows, among these, of the image clips.
  QList<int> imageRows;
};

/// The clips of a history that pass the query's filter and, with a text, contain every term of it, regardless
/// of case and diacritics: through the full-text index for terms of three characters and more, in memory for
/// shorter ones and while the index cannot answer. With a text, sensitive clips are never found. Any thread;
/// *waits* for the index. What comes of a stopped search is of no use.
[[nodiscard]] FoundClips findClips(const ClipQuery& query, const HistorySnapshot& history,
                                   ClipDatabase& database, const StopToken& stop = {});

/// Whether one clip is an answer to a query, by the same rules.
[[nodiscard]] bool matchesQuery(const IndexedClip& clip, const ClipQuery& query);

/// The clips that contain every term of a text, in history order; secrets are not found by an empty text
/// either. Any thread; *waits* for the index.
[[nodiscard]] QList<ClipRef> clipsMatching(const QString& text, const HistorySnapshot& history,
                                           ClipDatabase& database);

/// Those of these clips that are in a history, as they are there.
[[nodiscard]] QList<ClipRef> clipsOf(const QList<QUuid>& ids, const HistoryList& history);

/// The last answer to a search for a text. Main thread.
class HistorySearch final {
 public:
  /// The database must outlive the search.
  explicit HistorySearch(ClipDatabase& database) : database_(database) {}

  /// The clips that contain every term of the text, in history order, as they are now. Answers from its cache
  /// while text and revision are the same.
  [[nodiscard]] QList<ClipRef> find(const QString& text, const HistoryList& history, quint64 revision);

 private:
  void look(const QString& text, const HistoryList& history, quint64 revision);

  /// Ids, so that nothing that has been deleted is kept.
  struct Cached {
    QString text;
    quint64 revision = 0;
    QList<QUuid> ids;
  };

  ClipDatabase& database_;
  std::optional<Cached> cache_;
};

}  // namespace nimbrel
