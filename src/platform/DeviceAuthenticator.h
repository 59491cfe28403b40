#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace nimbrel {

/// What the user is asked to prove who they are for.
struct AuthenticationReason final {
  /// Names the reason to the system, which may have a text of its own for it: letters and hyphens.
  QString identifier;
  /// For systems that say it in the program's words; continues "Nimbrel wants to".
  QString text;
};

/// How a request to the user ended.
struct AuthenticationReply final {
  enum class Outcome {
    proven,
    /// A wrong password, or the user cancelled, or gave no answer in time, or nobody knows what came of it.
    refused,
    /// Nobody was asked.
    unavailable,
  };

  Outcome outcome = Outcome::unavailable;
  /// What went wrong with the asking, in the system's words; may be empty, and is for a user who refused.
  QString detail;
};

/// Has the system ask the user for their password, fingerprint or the like. Main thread; nothing waits, and
/// every handler is called once, later, on the main thread, unless the authenticator goes before.
class DeviceAuthenticator {
 public:
  virtual ~DeviceAuthenticator() = default;

  /// Tells whether the user can be asked: nothing when they can, else why not. Answers within seconds.
  virtual void canAuthenticate(std::function<void(std::optional<QString> obstacle)> done) = 0;

  /// Asks the user. Ends within minutes, whatever the system does; one at a time.
  virtual void authenticate(const AuthenticationReason& reason,
                            std::function<void(AuthenticationReply)> done) = 0;
};

}  // namespace nimbrel
