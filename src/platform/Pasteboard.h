#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

#include "platform/PasteboardContent.h"
#include "platform/PasteboardReadPolicy.h"
#include "platform/PasteboardSnapshot.h"

namespace nimbrel {

/// The system's general pasteboard. All methods belong to the main thread and none waits for another program.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// Whether the user lets this program read what others copy.
  enum class Access { standard, ask, alwaysAllow, alwaysDeny };
  [[nodiscard]] virtual Access access() const = 0;

  /// Says what to read of later changes; must be called before changes are of interest.
  virtual void setReadPolicy(const PasteboardReadPolicy& policy) = 0;

  /// The number of the latest change that is ready to be looked at; only grows.
  [[nodiscard]] virtual qint64 changeCount() const = 0;

  /// The changes after `count` that are ready, oldest first, the program's own writes left out. What has been
  /// returned or lies at or before `count` is forgotten. A desktop that keeps only the latest content returns
  /// that.
  [[nodiscard]] virtual QList<PasteboardSnapshot> changesAfter(qint64 count) = 0;

  /// The plain text on the pasteboard at `changeCount`, if it was read and is still there.
  [[nodiscard]] virtual std::optional<QString> currentText() const = 0;

  /// Replaces the content and gives the change count of this write; nothing when the pasteboard cannot be
  /// written.
  virtual std::optional<qint64> write(const PasteboardContent& content) = 0;

  /// Empties the pasteboard if it still holds the change `count`, and gives the change count of the clearing;
  /// nothing, and no effect, when somebody has copied since.
  virtual std::optional<qint64> clearIfUnchanged(qint64 count) = 0;

  /// The handler is called on the main thread soon after `changeCount` grew by somebody else's change.
  virtual void setChangeHandler(std::function<void()> handler) = 0;
};

}  // namespace nimbrel
