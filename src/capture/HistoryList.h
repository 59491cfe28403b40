#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QUuid>
#include <optional>

#include "capture/model/IndexedClip.h"

namespace nimbrel {

/// The ordered history, newest first: a value that knows its clips and nothing of where they come from or go
/// to. Finding by id scans 32 bytes a clip; finding by content is a table look-up.
class HistoryList final {
 public:
  HistoryList() = default;
  /// The clips in the order given; of several with one id the first counts.
  explicit HistoryList(const QList<ClipRef>& clips);

  [[nodiscard]] qsizetype size() const { return slots_.size(); }
  [[nodiscard]] bool isEmpty() const { return slots_.isEmpty(); }
  [[nodiscard]] const ClipRef& at(qsizetype row) const { return slots_.at(row).clip; }
  [[nodiscard]] QList<ClipRef> clips() const;

  [[nodiscard]] std::optional<qsizetype> rowOf(const QUuid& id) const;
  /// The row of the text clip with this text, by its hash or, for clips without one, by the text itself.
  [[nodiscard]] std::optional<qsizetype> rowOfText(const QString& text, const QString& textHash) const;
  [[nodiscard]] std::optional<qsizetype> rowOfFiles(const QString& urls, const QString& textHash) const;
  [[nodiscard]] std::optional<qsizetype> rowOfImage(const QString& imageHash) const;

  void insertAtTop(ClipRef clip);
  /// Puts another value with the same id in a clip's place.
  void replace(qsizetype row, ClipRef clip);
  /// The same, and moves it to the head.
  void replaceAtTop(qsizetype row, ClipRef clip);
  void removeAt(qsizetype row);

  /// The rows of the oldest unpinned clips beyond a capacity, last row first.
  [[nodiscard]] QList<qsizetype> rowsBeyond(qsizetype capacity) const;
  /// The rows of the unpinned clips whose expiry is at or before a moment, last row first. Costs nothing
  /// while no expiry can have been reached.
  [[nodiscard]] QList<qsizetype> rowsExpiredAt(Timestamp moment);

 private:
  struct Slot {
    QUuid id;
    ClipRef clip;
  };

  void note(const IndexedClip& clip);
  void forget(const IndexedClip& clip);
  [[nodiscard]] std::optional<qsizetype> rowOfHash(const QString& textHash, bool file) const;

  QList<Slot> slots_;
  QMultiHash<QString, QUuid> byTextHash_;
  QMultiHash<QString, QUuid> byImageHash_;
  /// Text clips without a hash, as older histories have them.
  qsizetype unhashed_ = 0;
  qsizetype unpinned_ = 0;
  /// No unpinned clip expires before this; it may be earlier than the first that does.
  std::optional<Timestamp> earliestExpiry_;
};

}  // namespace nimbrel
