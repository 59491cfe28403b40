#pragma once

#include <QString>

#include "platform/InstanceRequests.h"

namespace nimbrel {

/// Asks something of the running instance, from another process, which needs no display for it. Every method
/// *waits*. Main thread.
class InstanceClient {
 public:
  /// Errors of the way to the instance, as an `IntentReply` has them: there is none, or it does not answer.
  static constexpr QStringView kUnavailable = u"unavailable";
  static constexpr QStringView kNoAnswer = u"noAnswer";
  /// More was asked than the instance answers.
  static constexpr QStringView kTooManyCalls = u"tooManyCalls";

  virtual ~InstanceClient() = default;

  /// Has an intent carried out; an instance that is only starting is waited for, and one is started where the
  /// desktop does that.
  [[nodiscard]] virtual IntentReply perform(const IntentCall& call) = 0;

  /// Has the panel shown, with its collections to choose from if so asked.
  [[nodiscard]] virtual IntentReply show(bool collections) = 0;

  /// Ends the instance, which is done also when there is none. Waits until it has gone, some seconds at most.
  [[nodiscard]] virtual IntentReply quit() = 0;

  /// Whether an instance is running.
  [[nodiscard]] virtual bool isRunning() = 0;

  /// Tells the user something in the desktop's own way, for whoever has no terminal.
  virtual void notify(const QString& title, const QString& text) = 0;
};

}  // namespace nimbrel
