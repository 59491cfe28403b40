#pragma once

#include <QByteArray>
#include <optional>

namespace nimbrel {

/// Unpredictable bytes for keys and nonces. Any thread.
class RandomSource {
 public:
  virtual ~RandomSource() = default;

  /// Exactly `count` bytes, or nothing when the system cannot give them.
  [[nodiscard]] virtual std::optional<QByteArray> bytes(int count) = 0;
};

/// The cryptographic generator of OpenSSL, seeded by the system.
class SystemRandom final : public RandomSource {
 public:
  [[nodiscard]] std::optional<QByteArray> bytes(int count) override;
};

}  // namespace nimbrel
