#include "storage/ContentHash.h"

#include <openssl/evp.h>

#include <QByteArray>
#include <array>

namespace nimbrel {

QString sha256Hex(QByteArrayView data) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int length = 0;
  if (EVP_Digest(data.data(), static_cast<std::size_t>(data.size()), digest.data(), &length, EVP_sha256(),
                 nullptr) != 1)
    return {};
  return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(digest.data()), length).toHex());
}

}  // namespace nimbrel
