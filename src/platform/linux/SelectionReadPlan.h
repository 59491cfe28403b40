#pragma once

#include <QByteArray>
#include <QStringList>
#include <optional>

#include "platform/PasteboardReadPolicy.h"
#include "platform/PasteboardSnapshot.h"
#include "platform/linux/PasteboardTargets.h"

namespace nimbrel {

/// One conversion to ask the owner of the selection for.
struct ReadStep final {
  PasteboardFormat format{};
  QString target;
  /// Bytes to take at most.
  qint64 budget = 0;

  bool operator==(const ReadStep&) const = default;
};

/// Decides which conversions to ask for, one after the other, and turns their answers into a snapshot: file,
/// then text with one rich form, then image; the first that has content ends the reading. Knows nothing of X.
class SelectionReadPlan final {
 public:
  explicit SelectionReadPlan(PasteboardReadPolicy policy) : policy_(std::move(policy)) {}

  /// The owner's list of targets; nothing when it gave none, which old programs do: then text alone is tried.
  void setTargets(const std::optional<QStringList>& targets);

  /// What to ask for now; nothing when the snapshot is complete.
  [[nodiscard]] std::optional<ReadStep> nextStep() const;

  /// The three ways in which the current step can end.
  void accept(const QByteArray& bytes);
  void refuse();
  void reportOversized();

  /// Whether what has been read so far is worth keeping when the owner falls silent now.
  [[nodiscard]] bool hasContent() const;

  [[nodiscard]] const PasteboardSnapshot& snapshot() const { return snapshot_; }

 private:
  void begin(PasteboardFormat format);
  void finish() { candidates_.clear(); }
  void leave(PasteboardFormat format);
  [[nodiscard]] bool hasText() const;
  [[nodiscard]] qint64 budgetOf(PasteboardFormat format) const;

  PasteboardReadPolicy policy_;
  QStringList targets_;
  bool targetsKnown_ = false;
  PasteboardFormat format_{};
  QStringList candidates_;
  PasteboardSnapshot snapshot_;
};

}  // namespace nimbrel
