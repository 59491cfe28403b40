#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "storage/AesGcm.h"

namespace nimbrel {

/// What an archive of the history consists of; docs/archive-format.md describes it byte for byte.
struct ArchiveRecord final {
  enum class Type : quint8 {
    /// The clip, as JSON.
    clip = 1,
    /// The picture or the formatted text of the clip before it.
    image = 2,
    rich = 3,
  };

  Type type = Type::clip;
  QByteArray data;

  bool operator==(const ArchiveRecord&) const = default;
};

namespace archive {

inline constexpr QByteArrayView kMagic("NIMBRELX");
inline constexpr int kVersion = 1;
inline constexpr int kSaltBytes = 16;
/// The magic, the version, log2 N, r and p of scrypt, the salt.
inline constexpr int kHeaderBytes = 8 + 4 + kSaltBytes;
/// Of a chunk's content, at most.
inline constexpr int kChunkBytes = 1 << 20;
/// In a chunk's length: it is the last.
inline constexpr quint32 kLastChunk = 0x80000000U;
/// Of a record, at most: more than any picture that capture stores takes.
inline constexpr quint32 kMaxRecordBytes = 160U << 20;

/// How dear it is to try a passphrase: the parameters of scrypt (RFC 7914).
struct Cost final {
  int log2N = 17;
  int r = 8;
  int p = 1;

  /// The memory that it takes, in bytes.
  [[nodiscard]] qint64 memory() const { return (qint64{128} << log2N) * r; }
  /// Whether an archive that somebody has sent may ask for this: no more than 512 MB.
  [[nodiscard]] bool isBearable() const {
    return log2N >= 1 && log2N <= 20 && r >= 1 && r <= 32 && p >= 1 && p <= 4 && memory() <= 512LL << 20;
  }

  bool operator==(const Cost&) const = default;
};

/// The cipher for a passphrase, as UTF-8 in normalisation form C; null when the memory cannot be had. *Takes*
/// half a second.
[[nodiscard]] std::unique_ptr<AesGcm> cipherFor(const QByteArray& passphrase, QByteArrayView salt,
                                                const Cost& cost);

/// The nonce of the chunk with this number.
[[nodiscard]] QByteArray nonceOf(quint64 chunk);

/// Four bytes, the highest first.
[[nodiscard]] QByteArray bigEndian(quint32 value);

}  // namespace archive
}  // namespace nimbrel
