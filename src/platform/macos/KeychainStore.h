#pragma once

#include "platform/SecretStore.h"

namespace nimbrel::macos {

/// Generic passwords in the user's Keychain.
class KeychainStore final : public SecretStore {
 public:
  [[nodiscard]] SecretLookup find(const SecretItem& item) override;
  [[nodiscard]] int add(const SecretItem& item, const QByteArray& secret) override;
};

}  // namespace nimbrel::macos
