#include "storage/HistoryCipher.h"

#include <algorithm>

#include "capture/model/Log.h"
#include "memory/Wipe.h"

namespace nimbrel {
namespace {

constexpr QByteArrayView kMagic("BRVN1");
constexpr qsizetype kOverhead = 5 + AesGcm::kNonceBytes + AesGcm::kTagBytes;

}  // namespace

SecretItem historyKeyItem() {
  return {QStringLiteral("Nimbrel.history-key"), QStringLiteral("history")};
}

HistoryCipher::HistoryCipher(SecretStore& secrets, RandomSource& random)
    : secrets_(secrets), random_(random) {}

HistoryCipher::~HistoryCipher() = default;

std::optional<QByteArray> HistoryCipher::seal(const QByteArray& data) {
  const AesGcm* const used = key();
  if (!used) return data;
  const auto nonce = random_.bytes(AesGcm::kNonceBytes);
  if (!nonce || nonce->size() != AesGcm::kNonceBytes) return std::nullopt;
  QByteArray envelope(data.size() + kOverhead, Qt::Uninitialized);
  std::copy(kMagic.begin(), kMagic.end(), envelope.begin());
  std::copy(nonce->begin(), nonce->end(), envelope.begin() + kMagic.size());
  if (!used->seal(*nonce, {}, data, envelope.data() + kMagic.size() + AesGcm::kNonceBytes))
    return std::nullopt;
  return envelope;
}

std::optional<QByteArray> HistoryCipher::open(const QByteArray& data) {
  if (!isSealed(data)) return data;
  const AesGcm* const used = key();
  if (!used || data.size() < kOverhead) return std::nullopt;
  const QByteArrayView envelope(data);
  return used->open(envelope.sliced(kMagic.size(), AesGcm::kNonceBytes), {},
                    envelope.sliced(kMagic.size() + AesGcm::kNonceBytes));
}

bool HistoryCipher::isSealed(const QByteArray& data) {
  return data.startsWith(kMagic);
}

HistoryCipher::KeyState HistoryCipher::keyState() {
  static_cast<void>(key());
  return keyState_;
}

const AesGcm* HistoryCipher::key() {
  std::call_once(loaded_, [this] {
    QByteArray bytes = loadOrCreateKey();
    if (bytes.size() != AesGcm::kKeyBytes) return;
    key_ = std::make_unique<AesGcm>(std::move(bytes));
    keyState_ = KeyState::ready;
  });
  return key_.get();
}

QByteArray HistoryCipher::loadOrCreateKey() {
  SecretLookup lookup = secrets_.find(historyKeyItem());
  if (lookup.outcome == SecretLookup::Outcome::notFound) return createKey();
  if (lookup.outcome == SecretLookup::Outcome::found && lookup.secret.size() == AesGcm::kKeyBytes)
    return std::move(lookup.secret);
  wipe(lookup.secret);
  if (lookup.outcome != SecretLookup::Outcome::unavailable) keyState_ = KeyState::unreadable;
  qCCritical(clipboardLog, "Llavero: no se pudo leer la clave (OSStatus %d)", lookup.status);
  return {};
}

QByteArray HistoryCipher::createKey() {
  auto bytes = random_.bytes(AesGcm::kKeyBytes);
  // A key that the key store did not take would seal a history that nobody can open again.
  const int status = bytes ? secrets_.add(historyKeyItem(), *bytes) : -1;
  if (status == 0) return std::move(*bytes);
  if (bytes) wipe(*bytes);
  qCCritical(clipboardLog, "Llavero: no se pudo guardar la clave (OSStatus %d)", status);
  return {};
}

}  // namespace nimbrel
