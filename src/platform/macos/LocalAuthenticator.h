#pragma once

#include <memory>

#include "platform/DeviceAuthenticator.h"

namespace nimbrel::macos {

/// LocalAuthentication: Touch ID, a watch, or the account's password.
class LocalAuthenticator final : public DeviceAuthenticator {
 public:
  void canAuthenticate(std::function<void(std::optional<QString> obstacle)> done) override;
  void authenticate(const AuthenticationReason& reason,
                    std::function<void(AuthenticationReply)> done) override;

 private:
  /// Gone when this is: then nobody is told any more.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace nimbrel::macos
