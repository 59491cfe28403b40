#pragma once

#include <QObject>
#include <chrono>
#include <functional>
#include <optional>

#include "platform/Clock.h"
#include "platform/DeviceAuthenticator.h"

namespace nimbrel {

/// Has the user prove who they are, before secrets are shown. A proof holds for a minute, whatever it was
/// asked for. Main thread.
class Lock final : public QObject {
  Q_OBJECT

 public:
  /// What the proof is for: one clip, or the whole history.
  enum class Reason { clip, history };
  /// What came of asking.
  enum class Answer {
    proven,
    refused,
    /// Nobody could be asked.
    unavailable,
  };

  /// How long a proof holds.
  static constexpr std::chrono::seconds kGrace{60};
  /// How long after the system's prompt the lock still counts as asking: so long the keyboard may wander.
  static constexpr std::chrono::milliseconds kSettling{600};

  /// Both outlive the lock.
  Lock(DeviceAuthenticator& authenticator, const Clock& clock)
      : authenticator_(authenticator), clock_(clock) {}

  /// Calls `done` with true when the user has proved who they are, now or within the last minute, else with
  /// false: also when the user is being asked already. At once, where nobody has to be asked; `done` is not
  /// called once the lock is gone.
  void authenticate(Reason reason, std::function<void(bool)> done);

  /// The same for those to whom it matters why there is no proof.
  void ask(Reason reason, std::function<void(Answer)> done);

  /// Whether the user has proved who they are within the last minute: asking now prompts nobody.
  [[nodiscard]] bool holdsProof() const { return isWithinGrace(); }

  /// Whether the system's prompt is up, or was a moment ago: the keyboard is the prompt's.
  [[nodiscard]] bool isAuthenticating() const;

  /// Whether the prompt is up now.
  [[nodiscard]] bool isPrompting() const { return prompting_; }

  /// Whoever asked last, for this, does not want the answer any more: no prompt comes up that is not up
  /// already.
  void withdraw(Reason reason);

  /// Runs after each prompt, whatever came of it.
  void setAfterAuthentication(std::function<void()> hook) { afterAuthentication_ = std::move(hook); }

 Q_SIGNALS:
  /// The system's prompt is about to come up.
  void promptOpens();
  /// Nobody could be asked.
  void unavailable(nimbrel::Lock::Reason reason);

 private:
  [[nodiscard]] bool isWithinGrace() const;
  void prompt(const AuthenticationReason& reason, std::function<void(Answer)> done);
  /// Notes how a prompt ended.
  [[nodiscard]] Answer answerOf(const AuthenticationReply& reply);
  void reportObstacle(const QString& detail);

  DeviceAuthenticator& authenticator_;
  const Clock& clock_;
  std::function<void()> afterAuthentication_;
  /// The last proof, by both clocks: one may be set back, the other stands still while the computer sleeps.
  struct Unlock {
    std::chrono::system_clock::time_point date;
    std::chrono::steady_clock::time_point moment;
  };
  std::optional<Unlock> lastUnlock_;
  /// From the question whether the user can be asked on.
  bool busy_ = false;
  Reason askedFor_ = Reason::clip;
  bool prompting_ = false;
  bool withdrawn_ = false;
  std::optional<std::chrono::steady_clock::time_point> lastReply_;
};

}  // namespace nimbrel
