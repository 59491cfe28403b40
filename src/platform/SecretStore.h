#pragma once

#include <QByteArray>
#include <QString>

namespace nimbrel {

/// Names one secret of the user.
struct SecretItem final {
  QString service;
  QString account;
};

/// The outcome of looking a secret up.
struct SecretLookup final {
  /// `unavailable` means that there is no key store to be asked.
  enum class Outcome { found, notFound, unavailable, failed };

  Outcome outcome = Outcome::failed;
  /// The stored bytes, whatever their length; empty unless found.
  QByteArray secret;
  /// The system's error code; 0 when it was found or there is none.
  int status = 0;
};

/// The system's key store. May be called from any thread, and may wait there for the user to unlock the
/// store: never call it on the main thread.
class SecretStore {
 public:
  virtual ~SecretStore() = default;

  [[nodiscard]] virtual SecretLookup find(const SecretItem& item) = 0;

  /// Stores a new secret, readable on this device only; 0 on success, else the system's error code. Never
  /// replaces an existing one.
  [[nodiscard]] virtual int add(const SecretItem& item, const QByteArray& secret) = 0;
};

}  // namespace nimbrel
