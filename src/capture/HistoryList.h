#pragma once

#include <QHash>
#include <QList>
#include <QUuid>
#include <optional>
#include <set>

#include "capture/model/IndexedClip.h"

namespace nimbrel {

class HistorySnapshot;

/// The ordered history, newest first: a value that knows its clips and nothing of where they come from or go
/// to. Every clip has a place, a number that only grows; a row is found from it by halving, and from an id or
/// a content by a table look-up.
class HistoryList final {
 public:
  using Place = quint64;

  HistoryList() = default;
  /// The clips in the order given; of several with one id the first counts.
  explicit HistoryList(const QList<ClipRef>& clips);

  [[nodiscard]] qsizetype size() const { return slots_.size(); }
  [[nodiscard]] bool isEmpty() const { return slots_.isEmpty(); }
  [[nodiscard]] const ClipRef& at(qsizetype row) const { return slots_.at(row).clip; }
  [[nodiscard]] Place placeAt(qsizetype row) const { return slots_.at(row).place; }
  [[nodiscard]] QList<ClipRef> clips() const;
  [[nodiscard]] HistorySnapshot snapshot() const;
  /// How many clips are not pinned.
  [[nodiscard]] qsizetype unpinnedCount() const { return static_cast<qsizetype>(unpinned_.size()); }

  [[nodiscard]] std::optional<qsizetype> rowOf(const QUuid& id) const;
  /// The row of the text clip with this text, by its hash or, for clips without one, by the text itself.
  [[nodiscard]] std::optional<qsizetype> rowOfText(const QString& text, const QString& textHash) const;
  [[nodiscard]] std::optional<qsizetype> rowOfFiles(const QString& urls, const QString& textHash) const;
  [[nodiscard]] std::optional<qsizetype> rowOfImage(const QString& imageHash) const;

  /// The place above all others, and above which every later one will be. For a clip that takes time to make,
  /// so that it ends up where it was copied.
  [[nodiscard]] Place takePlace() { return ++lastPlace_; }

  /// Puts a clip, whose id is not in the list yet, at a place taken before, and gives its row.
  qsizetype insert(ClipRef clip, Place place);
  /// Puts another value with the same id in a clip's place.
  void replace(qsizetype row, ClipRef clip);
  /// Moves a clip to a place taken before, and gives its new row.
  qsizetype move(qsizetype row, Place place);
  void removeAt(qsizetype row);

  /// The rows of the oldest unpinned clips beyond a capacity, last row first.
  [[nodiscard]] QList<qsizetype> rowsBeyond(qsizetype capacity) const;
  /// The rows of the unpinned clips whose expiry is at or before a moment, last row first. Costs nothing
  /// while no expiry can have been reached.
  [[nodiscard]] QList<qsizetype> rowsExpiredAt(Timestamp moment);

 private:
  friend class HistorySnapshot;

  struct Slot {
    Place place;
    ClipRef clip;
  };

  void note(const IndexedClip& clip, Place place);
  void forget(const IndexedClip& clip, Place place);
  [[nodiscard]] qsizetype rowFor(Place place) const;
  [[nodiscard]] std::optional<qsizetype> firstRow(const QMultiHash<QString, QUuid>& table,
                                                  const QString& hash, bool file) const;

  /// By place, the highest first.
  QList<Slot> slots_;
  QHash<QUuid, Place> places_;
  Place lastPlace_ = 0;
  QMultiHash<QString, QUuid> byTextHash_;
  QMultiHash<QString, QUuid> byImageHash_;
  /// Text clips without a hash, as older histories have them.
  qsizetype unhashed_ = 0;
  /// The places of the unpinned clips, so that the oldest is found among however many pinned ones.
  std::set<Place> unpinned_;
  /// No unpinned clip expires before this; it may be earlier than the first that does.
  std::optional<Timestamp> earliestExpiry_;
};

/// The history as it stood at one moment, for other threads: cheap to take, and untouched by what happens to
/// the list later.
class HistorySnapshot final {
 public:
  explicit HistorySnapshot(const HistoryList& history) : slots_(history.slots_) {}

  [[nodiscard]] qsizetype size() const { return slots_.size(); }
  [[nodiscard]] const ClipRef& at(qsizetype row) const { return slots_.at(row).clip; }

 private:
  QList<HistoryList::Slot> slots_;
};

}  // namespace nimbrel
