#include "storage/archive/ArchiveFormat.h"

#include <openssl/evp.h>

#include <QtEndian>

namespace nimbrel::archive {

std::unique_ptr<AesGcm> cipherFor(const QByteArray& passphrase, QByteArrayView salt, const Cost& cost) {
  // Beside the large table there are small ones.
  constexpr quint64 kSlack = 1 << 20;
  QByteArray key(AesGcm::kKeyBytes, Qt::Uninitialized);
  const bool derived =
      EVP_PBE_scrypt(passphrase.constData(), static_cast<std::size_t>(passphrase.size()),
                     reinterpret_cast<const unsigned char*>(salt.data()),
                     static_cast<std::size_t>(salt.size()), quint64{1} << cost.log2N,
                     static_cast<quint64>(cost.r), static_cast<quint64>(cost.p),
                     static_cast<quint64>(cost.memory()) +
                         quint64{128} * static_cast<quint64>(cost.r) * static_cast<quint64>(cost.p) + kSlack,
                     reinterpret_cast<unsigned char*>(key.data()), AesGcm::kKeyBytes) == 1;
  if (!derived) return nullptr;
  return std::make_unique<AesGcm>(std::move(key));
}

QByteArray nonceOf(quint64 chunk) {
  QByteArray nonce(AesGcm::kNonceBytes, '\0');
  qToBigEndian(chunk, nonce.data() + nonce.size() - sizeof(chunk));
  return nonce;
}

QByteArray bigEndian(quint32 value) {
  QByteArray bytes(sizeof(value), Qt::Uninitialized);
  qToBigEndian(value, bytes.data());
  return bytes;
}

}  // namespace nimbrel::archive
