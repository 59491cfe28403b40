#pragma once

#include <QLockFile>
#include <QString>

#include "app/CommandReport.h"
#include "app/HistoryCommand.h"

namespace nimbrel {

/// Keeps the application from running, in this session and in others, while it lives. Main thread.
class ExclusiveHistory final {
 public:
  ExclusiveHistory(const HistoryCommandParts& parts, const QString& storageDirectory);

  /// False when the application is running; then this keeps nobody out.
  [[nodiscard]] bool isHeld() const { return held_; }

  /// What the user is told then.
  [[nodiscard]] static CommandFailure whyNot();

 private:
  [[nodiscard]] bool take(const HistoryCommandParts& parts);

  QLockFile lock_;
  const bool held_;
};

}  // namespace nimbrel
