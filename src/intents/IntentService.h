#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <optional>

#include "intents/IntentServices.h"
#include "platform/InstanceRequests.h"

namespace nimbrel {

/// Carries out what other programs ask of the history, in plain values. What it hands out is never a secret,
/// and the lock is obeyed. Main thread.
class IntentService final {
 public:
  /// A longer text or name is nothing that anybody looks for; in UTF-16 units.
  static constexpr qsizetype kMaxArgument = 4096;
  /// The longest text of a suggestion.
  static constexpr qsizetype kMaxSuggestion = 200;

  /// From now on there is a history, or with null there is none.
  void setServices(const IntentServices* services) { services_ = services; }

  /// How long nobody is asked for a proof on behalf of other programs once the user has refused one; each
  /// time twice as long.
  static constexpr std::chrono::seconds kFirstPause{15};
  static constexpr std::chrono::seconds kLongestPause{300};

  /// Outlives whoever waits for the answer.
  void perform(const IntentCall& call, const IntentAnswer& given);

  /// The ids of the secure texts that hold all the terms. Nobody is asked for a proof for as little as typing
  /// in the desktop's search: where the lock wants one and there is none, nothing is found.
  void suggest(const QStringList& terms, const std::function<void(const QStringList& ids)>& found) const;

  /// What is shown of clips that were found; what has gone since, or is a secret, is left out.
  [[nodiscard]] QList<ClipSuggestion> describe(const QStringList& ids) const;

  /// Puts a clip that was found on the pasteboard, if it may still be handed out; asks for a proof where the
  /// lock wants one.
  void choose(const QString& id);

 private:
  [[nodiscard]] bool maySuggest() const;
  [[nodiscard]] ClipRef secureText(const QString& id) const;

  void carryOut(const IntentCall& call, const IntentAnswer& answer) const;
  [[nodiscard]] bool isRefusing() const;
  void noteOutcome(const QString& error);

  const IntentServices* services_ = nullptr;
  /// Until when nobody is asked.
  std::optional<std::chrono::steady_clock::time_point> refusing_;
  std::chrono::seconds pause_ = kFirstPause;
};

}  // namespace nimbrel
