#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <chrono>
#include <memory>

#include "platform/DeviceAuthenticator.h"

namespace nimbrel {

/// Asks for the user's password through polkit, whose authentication agent belongs to the desktop. Each
/// reason is an action, "app.nimbrel.Nimbrel." and its identifier, which the installation declares; the text
/// that the user sees stands there.
class PolkitAuthenticator final : public QObject, public DeviceAuthenticator {
 public:
  struct Patience final {
    /// For polkit to be there at all.
    std::chrono::milliseconds answer{5000};
    /// For the user to come up with the password.
    std::chrono::milliseconds user{120'000};
  };

  PolkitAuthenticator() : PolkitAuthenticator(Patience()) {}
  explicit PolkitAuthenticator(Patience patience) : patience_(patience) {}

  void canAuthenticate(std::function<void(std::optional<QString>)> done) override;
  void authenticate(const AuthenticationReason& reason,
                    std::function<void(AuthenticationReply)> done) override;

 private:
  void askWhetherThere(std::function<void(std::optional<QString>)> done);
  void cancel(const QString& cancellation);

  Patience patience_;
  /// How often the user was asked.
  int asked_ = 0;
};

}  // namespace nimbrel
