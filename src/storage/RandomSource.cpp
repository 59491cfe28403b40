#include "storage/RandomSource.h"

#include <openssl/rand.h>

namespace nimbrel {

std::optional<QByteArray> SystemRandom::bytes(int count) {
  QByteArray bytes(count, '\0');
  if (RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), count) != 1) return std::nullopt;
  return bytes;
}

}  // namespace nimbrel
