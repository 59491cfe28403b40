#pragma once

#include <QString>
#include <QStringList>

#include "intents/IntentServices.h"

namespace nimbrel {

/// Looks for a text in the history. Main thread.
class SearchHistoryIntent final {
 public:
  /// No more texts than this are given.
  static constexpr qsizetype kMaxResults = 20;

  struct Found final {
    /// As the search orders them.
    QStringList texts;
    QString dialog;
  };

  /// Without services, while the program starts, it fails.
  explicit SearchHistoryIntent(const IntentServices* services) : services_(services) {}

  [[nodiscard]] static QString title();
  [[nodiscard]] static QString parameterTitle();
  [[nodiscard]] static QString parameterDescription();
  /// What the intent does, in one line, with what is looked for.
  [[nodiscard]] static QString parameterSummary(const QString& text);

  void perform(const QString& text, const IntentDone<Found>& done) const;

 private:
  const IntentServices* services_;
};

}  // namespace nimbrel
