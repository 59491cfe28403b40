#pragma once

#include "platform/SecretStore.h"

namespace nimbrel {

/// The freedesktop Secret Service, through libsecret: attributes "service" and "account", default collection.
/// Secrets are stored as Base64 text, because key stores exist that lose bytes which are not text.
class LibsecretStore final : public SecretStore {
 public:
  [[nodiscard]] SecretLookup find(const SecretItem& item) override;
  [[nodiscard]] int add(const SecretItem& item, const QByteArray& secret) override;
};

}  // namespace nimbrel
