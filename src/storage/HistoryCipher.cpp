#include "storage/HistoryCipher.h"

#include <openssl/evp.h>

#include "capture/model/Log.h"
#include "memory/Wipe.h"

namespace nimbrel {
namespace {

constexpr QByteArrayView kMagic("BRVN1");
constexpr int kKeyBytes = 32;
constexpr int kNonceBytes = 12;
constexpr int kTagBytes = 16;
constexpr qsizetype kOverhead = 5 + kNonceBytes + kTagBytes;

struct ContextDeleter {
  void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};
struct CipherDeleter {
  void operator()(EVP_CIPHER* cipher) const { EVP_CIPHER_free(cipher); }
};
using Context = std::unique_ptr<EVP_CIPHER_CTX, ContextDeleter>;

SecretItem historyKeyItem() {
  return {QStringLiteral("Nimbrel.history-key"), QStringLiteral("history")};
}

const unsigned char* unsignedBytes(const char* bytes) {
  return reinterpret_cast<const unsigned char*>(bytes);
}
unsigned char* unsignedBytes(char* bytes) {
  return reinterpret_cast<unsigned char*>(bytes);
}

}  // namespace

/// The key's bytes, wiped when they go, and the algorithm, fetched once because fetching costs more than a
/// clip.
struct HistoryCipher::Key {
  explicit Key(QByteArray keyBytes)
      : bytes(std::move(keyBytes)), algorithm(EVP_CIPHER_fetch(nullptr, "AES-256-GCM", nullptr)) {}

  WipedBytes bytes;
  std::unique_ptr<EVP_CIPHER, CipherDeleter> algorithm;
};

HistoryCipher::HistoryCipher(SecretStore& secrets, RandomSource& random)
    : secrets_(secrets), random_(random) {}

HistoryCipher::~HistoryCipher() = default;

std::optional<QByteArray> HistoryCipher::seal(const QByteArray& data) {
  const Key* const used = key();
  if (!used) return data;
  const auto nonce = random_.bytes(kNonceBytes);
  if (!nonce || nonce->size() != kNonceBytes) return std::nullopt;
  const Context context(EVP_CIPHER_CTX_new());
  QByteArray envelope(data.size() + kOverhead, Qt::Uninitialized);
  std::copy(kMagic.begin(), kMagic.end(), envelope.begin());
  std::copy(nonce->begin(), nonce->end(), envelope.begin() + kMagic.size());
  unsigned char* const ciphertext = unsignedBytes(envelope.data()) + kMagic.size() + kNonceBytes;
  int written = 0;
  const bool sealed =
      context &&
      EVP_EncryptInit_ex2(context.get(), used->algorithm.get(),
                          unsignedBytes(used->bytes.bytes().constData()), unsignedBytes(nonce->constData()),
                          nullptr) == 1 &&
      EVP_EncryptUpdate(context.get(), ciphertext, &written, unsignedBytes(data.constData()),
                        static_cast<int>(data.size())) == 1 &&
      EVP_EncryptFinal_ex(context.get(), ciphertext + written, &written) == 1 &&
      EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_GET_TAG, kTagBytes, ciphertext + data.size()) == 1;
  if (!sealed) return std::nullopt;
  return envelope;
}

std::optional<QByteArray> HistoryCipher::open(const QByteArray& data) {
  if (!isSealed(data)) return data;
  const Key* const used = key();
  if (!used || data.size() < kOverhead) return std::nullopt;
  const char* const nonce = data.constData() + kMagic.size();
  const char* const ciphertext = nonce + kNonceBytes;
  const qsizetype length = data.size() - kOverhead;
  QByteArray tag = data.last(kTagBytes);
  QByteArray plain(length, Qt::Uninitialized);
  const Context context(EVP_CIPHER_CTX_new());
  int written = 0;
  const bool opened =
      context &&
      EVP_DecryptInit_ex2(context.get(), used->algorithm.get(),
                          unsignedBytes(used->bytes.bytes().constData()), unsignedBytes(nonce),
                          nullptr) == 1 &&
      EVP_DecryptUpdate(context.get(), unsignedBytes(plain.data()), &written, unsignedBytes(ciphertext),
                        static_cast<int>(length)) == 1 &&
      EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_SET_TAG, kTagBytes, tag.data()) == 1 &&
      EVP_DecryptFinal_ex(context.get(), unsignedBytes(plain.data()) + written, &written) == 1;
  if (!opened) {
    // What failed authentication must not linger.
    wipe(plain);
    return std::nullopt;
  }
  return plain;
}

bool HistoryCipher::isSealed(const QByteArray& data) {
  return data.startsWith(kMagic);
}

HistoryCipher::KeyState HistoryCipher::keyState() {
  static_cast<void>(key());
  return keyState_;
}

const HistoryCipher::Key* HistoryCipher::key() {
  std::call_once(loaded_, [this] {
    QByteArray bytes = loadOrCreateKey();
    if (bytes.size() != kKeyBytes) return;
    key_ = std::make_unique<Key>(std::move(bytes));
    keyState_ = KeyState::ready;
  });
  return key_.get();
}

QByteArray HistoryCipher::loadOrCreateKey() {
  SecretLookup lookup = secrets_.find(historyKeyItem());
  if (lookup.outcome == SecretLookup::Outcome::notFound) return createKey();
  if (lookup.outcome == SecretLookup::Outcome::found && lookup.secret.size() == kKeyBytes)
    return std::move(lookup.secret);
  wipe(lookup.secret);
  if (lookup.outcome != SecretLookup::Outcome::unavailable) keyState_ = KeyState::unreadable;
  qCCritical(clipboardLog, "Llavero: no se pudo leer la clave (OSStatus %d)", lookup.status);
  return {};
}

QByteArray HistoryCipher::createKey() {
  auto bytes = random_.bytes(kKeyBytes);
  // A key that the key store did not take would seal a history that nobody can open again.
  const int status = bytes ? secrets_.add(historyKeyItem(), *bytes) : -1;
  if (status == 0) return std::move(*bytes);
  if (bytes) wipe(*bytes);
  qCCritical(clipboardLog, "Llavero: no se pudo guardar la clave (OSStatus %d)", status);
  return {};
}

}  // namespace nimbrel
