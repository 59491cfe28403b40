#pragma once

#include <QByteArray>
#include <memory>
#include <mutex>
#include <optional>

#include "platform/SecretStore.h"
#include "storage/AesGcm.h"
#include "storage/RandomSource.h"

namespace nimbrel {

/// Where the history key is kept in the key store.
[[nodiscard]] SecretItem historyKeyItem();

/// Seals what is written to disk and opens what is read back, with AES-256-GCM (NIST SP 800-38D) under the
/// history key, which is looked up in the key store once, on first use, and made there when there is none
/// yet.
///
/// The envelope: the five bytes "BRVN1", a random nonce of 12 bytes, the ciphertext, a tag of 16 bytes.
/// Without a key everything is written in plaintext; plaintext is always readable.
///
/// All methods may be called from any thread. The first one waits for the key store, so it must not be on the
/// main thread.
class HistoryCipher final {
 public:
  /// Both must outlive the cipher.
  HistoryCipher(SecretStore& secrets, RandomSource& random);
  ~HistoryCipher();
  HistoryCipher(const HistoryCipher&) = delete;
  HistoryCipher& operator=(const HistoryCipher&) = delete;

  /// The envelope of the data, or the data itself when there is no key. Nothing when encryption fails; then
  /// the data must not be written.
  [[nodiscard]] std::optional<QByteArray> seal(const QByteArray& data);

  /// The content of an envelope; data without the envelope's first five bytes is returned as it is. Nothing
  /// when there is no key, when the envelope is too short, or when it was altered.
  [[nodiscard]] std::optional<QByteArray> open(const QByteArray& data);

  /// Whether data begins as an envelope does; says nothing about whether it can be opened.
  [[nodiscard]] static bool isSealed(const QByteArray& data);

  /// Whether there is a history key: the history is encrypted at rest.
  [[nodiscard]] bool hasKey() { return keyState() == KeyState::ready; }

  enum class KeyState {
    ready,
    /// There is no key store, or it did not take a new key.
    unavailable,
    /// The key store has a key, or may have one, that could not be read.
    unreadable,
  };
  [[nodiscard]] KeyState keyState();

 private:
  /// Loads the key when it has not been looked up yet; null when there is none.
  const AesGcm* key();
  [[nodiscard]] QByteArray loadOrCreateKey();
  [[nodiscard]] QByteArray createKey();

  SecretStore& secrets_;
  RandomSource& random_;
  std::once_flag loaded_;
  KeyState keyState_ = KeyState::unavailable;
  std::unique_ptr<AesGcm> key_;
};

}  // namespace nimbrel
