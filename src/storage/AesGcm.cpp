#include "storage/AesGcm.h"

#include <openssl/evp.h>

namespace nimbrel {
namespace {

struct ContextDeleter {
  void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};
using Context = std::unique_ptr<EVP_CIPHER_CTX, ContextDeleter>;

const unsigned char* unsignedBytes(const char* bytes) {
  return reinterpret_cast<const unsigned char*>(bytes);
}
unsigned char* unsignedBytes(char* bytes) {
  return reinterpret_cast<unsigned char*>(bytes);
}

}  // namespace

void AesGcm::CipherDeleter::operator()(evp_cipher_st* cipher) const {
  EVP_CIPHER_free(cipher);
}

AesGcm::AesGcm(QByteArray key)
    : key_(std::move(key)), algorithm_(EVP_CIPHER_fetch(nullptr, "AES-256-GCM", nullptr)) {}

bool AesGcm::seal(QByteArrayView nonce, QByteArrayView context, QByteArrayView data, char* output) const {
  const Context cipher(EVP_CIPHER_CTX_new());
  unsigned char* const ciphertext = unsignedBytes(output);
  int written = 0;
  return cipher && nonce.size() == kNonceBytes && key_.bytes().size() == kKeyBytes &&
         EVP_EncryptInit_ex2(cipher.get(), algorithm_.get(), unsignedBytes(key_.bytes().constData()),
                             unsignedBytes(nonce.data()), nullptr) == 1 &&
         (context.isEmpty() ||
          EVP_EncryptUpdate(cipher.get(), nullptr, &written, unsignedBytes(context.data()),
                            static_cast<int>(context.size())) == 1) &&
         EVP_EncryptUpdate(cipher.get(), ciphertext, &written, unsignedBytes(data.data()),
                           static_cast<int>(data.size())) == 1 &&
         EVP_EncryptFinal_ex(cipher.get(), ciphertext + written, &written) == 1 &&
         EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_AEAD_GET_TAG, kTagBytes, ciphertext + data.size()) == 1;
}

std::optional<QByteArray> AesGcm::open(QByteArrayView nonce, QByteArrayView context,
                                       QByteArrayView sealed) const {
  if (sealed.size() < kTagBytes || nonce.size() != kNonceBytes || key_.bytes().size() != kKeyBytes)
    return std::nullopt;
  const qsizetype length = sealed.size() - kTagBytes;
  QByteArray tag = sealed.last(kTagBytes).toByteArray();
  QByteArray plain(length, Qt::Uninitialized);
  const Context cipher(EVP_CIPHER_CTX_new());
  int written = 0;
  const bool opened =
      cipher &&
      EVP_DecryptInit_ex2(cipher.get(), algorithm_.get(), unsignedBytes(key_.bytes().constData()),
                          unsignedBytes(nonce.data()), nullptr) == 1 &&
      (context.isEmpty() || EVP_DecryptUpdate(cipher.get(), nullptr, &written, unsignedBytes(context.data()),
                                              static_cast<int>(context.size())) == 1) &&
      EVP_DecryptUpdate(cipher.get(), unsignedBytes(plain.data()), &written, unsignedBytes(sealed.data()),
                        static_cast<int>(length)) == 1 &&
      EVP_CIPHER_CTX_ctrl(cipher.get(), EVP_CTRL_AEAD_SET_TAG, kTagBytes, tag.data()) == 1 &&
      EVP_DecryptFinal_ex(cipher.get(), unsignedBytes(plain.data()) + written, &written) == 1;
  if (opened) return plain;
  // What failed authentication must not linger.
  wipe(plain);
  return std::nullopt;
}

}  // namespace nimbrel
