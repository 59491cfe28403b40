#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <memory>
#include <optional>

#include "memory/Wipe.h"

// OpenSSL's cipher.
struct evp_cipher_st;

namespace nimbrel {

/// AES-256-GCM (NIST SP 800-38D) under one key, which is wiped when this goes. Any thread.
class AesGcm final {
 public:
  static constexpr int kKeyBytes = 32;
  static constexpr int kNonceBytes = 12;
  static constexpr int kTagBytes = 16;

  /// A key of `kKeyBytes`.
  explicit AesGcm(QByteArray key);

  /// Writes the ciphertext and the tag after it to `output`, which has room for them. A nonce of
  /// `kNonceBytes` serves once; `context` is authenticated with the data and not written. False when that
  /// fails, and then what was written is of no use.
  [[nodiscard]] bool seal(QByteArrayView nonce, QByteArrayView context, QByteArrayView data,
                          char* output) const;

  /// The content of a ciphertext with its tag; nothing when it, the nonce or the context was altered.
  [[nodiscard]] std::optional<QByteArray> open(QByteArrayView nonce, QByteArrayView context,
                                               QByteArrayView sealed) const;

 private:
  struct CipherDeleter {
    void operator()(evp_cipher_st* cipher) const;
  };

  WipedBytes key_;
  // Fetched once: that costs more than a clip.
  std::unique_ptr<evp_cipher_st, CipherDeleter> algorithm_;
};

}  // namespace nimbrel
