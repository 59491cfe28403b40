#pragma once

#include <QList>
#include <QString>
#include <optional>

#include "capture/HistoryList.h"
#include "storage/ClipDatabase.h"

namespace nimbrel {

/// Finds clips by their text: through the full-text index for terms of three characters and more, in memory
/// for shorter ones and while the index cannot answer. Sensitive clips are never found. Main thread.
class HistorySearch final {
 public:
  /// The database must outlive the search.
  explicit HistorySearch(ClipDatabase& database) : database_(database) {}

  /// The clips that contain every term of the query, regardless of case and diacritics, in history order; all
  /// clips that are not sensitive for a query without terms. Answers from its cache while query and revision
  /// are the same.
  [[nodiscard]] const QList<ClipRef>& find(const QString& query, const HistoryList& history,
                                           quint64 revision);

 private:
  struct Cached {
    QString query;
    quint64 revision = 0;
    QList<ClipRef> clips;
  };

  ClipDatabase& database_;
  std::optional<Cached> cache_;
};

/// Whether one clip contains every term of a query, by the same rules.
[[nodiscard]] bool matchesQuery(const IndexedClip& clip, const QString& query);

}  // namespace nimbrel
