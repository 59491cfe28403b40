#pragma once

#include <QByteArray>
#include <QIODevice>
#include <memory>
#include <optional>
#include <variant>

#include "storage/archive/ArchiveFormat.h"

namespace nimbrel {

/// Why an archive cannot be read.
enum class ArchiveError {
  /// It is something else, or of a newer version.
  noArchive,
  /// Or its first bytes were altered.
  wrongPassphrase,
  /// It was altered, or is not all there.
  damaged,
  unreadable,
  /// It asks for more memory than there is, or than an archive may ask for.
  tooDear,
};

/// Reads what `ArchiveWriter` has written, piece by piece; whatever the bytes are, it takes no more memory
/// than a record may have. One thread; *waits* for the device.
class ArchiveReader final {
 public:
  /// The device, which is open, outlives the reader.
  explicit ArchiveReader(QIODevice& input) : input_(input) {}
  ~ArchiveReader() { wipe(plain_); }
  ArchiveReader(const ArchiveReader&) = delete;
  ArchiveReader& operator=(const ArchiveReader&) = delete;

  struct End final {};

  /// Reads the header and the first piece, first of all; nothing when that went well.
  [[nodiscard]] std::optional<ArchiveError> begin(const QByteArray& passphrase);

  /// The next record; the end only where the archive has been read whole, and is what was written.
  [[nodiscard]] std::variant<ArchiveRecord, End, ArchiveError> next();

 private:
  [[nodiscard]] std::optional<QByteArray> read(qsizetype size);
  [[nodiscard]] std::optional<ArchiveError> readChunk();
  [[nodiscard]] std::variant<QByteArray, ArchiveError> take(qsizetype size);

  QIODevice& input_;
  std::unique_ptr<AesGcm> cipher_;
  QByteArray header_;
  /// The content of the last chunk, and how much of it has been taken.
  QByteArray plain_;
  qsizetype taken_ = 0;
  quint64 chunk_ = 0;
  bool last_ = false;
};

}  // namespace nimbrel
