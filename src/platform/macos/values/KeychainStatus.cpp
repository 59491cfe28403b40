#include "platform/macos/values/KeychainStatus.h"

#include <utility>

namespace nimbrel::macos {

SecretLookup secretLookup(qint32 status, std::optional<QByteArray> data) {
  using Outcome = SecretLookup::Outcome;
  switch (status) {
    case kKeychainSuccess:
      return {.outcome = Outcome::found, .secret = std::move(data).value_or(QByteArray()), .status = 0};
    case kKeychainItemNotFound:
      return {.outcome = Outcome::notFound, .secret = {}, .status = status};
    case kKeychainNotAvailable:
    case kNoSuchKeychain:
    case kNoDefaultKeychain:
      return {.outcome = Outcome::unavailable, .secret = {}, .status = status};
    default:
      return {.outcome = Outcome::failed, .secret = {}, .status = status};
  }
}

}  // namespace nimbrel::macos
