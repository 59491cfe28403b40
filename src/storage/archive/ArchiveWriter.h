#pragma once

#include <QByteArray>
#include <QIODevice>
#include <memory>

#include "storage/RandomSource.h"
#include "storage/archive/ArchiveFormat.h"

namespace nimbrel {

/// Writes an archive, sealed under a passphrase, piece by piece. What went wrong with the device is its error
/// string. One thread; *waits* for the device.
class ArchiveWriter final {
 public:
  /// The device, which is open, outlives the writer.
  ArchiveWriter(QIODevice& output, RandomSource& random) : output_(output), random_(random) {}
  ~ArchiveWriter() { wipe(pending_); }
  ArchiveWriter(const ArchiveWriter&) = delete;
  ArchiveWriter& operator=(const ArchiveWriter&) = delete;

  /// Writes the header, first. False when it could not, and so for the others.
  [[nodiscard]] bool begin(const QByteArray& passphrase, const archive::Cost& cost = {});
  [[nodiscard]] bool write(const ArchiveRecord& record);
  /// Writes the end; without it the archive counts as damaged.
  [[nodiscard]] bool finish();

 private:
  [[nodiscard]] bool append(QByteArrayView bytes);
  [[nodiscard]] bool writeChunk(quint32 mark);

  QIODevice& output_;
  RandomSource& random_;
  std::unique_ptr<AesGcm> cipher_;
  QByteArray header_;
  QByteArray pending_;
  quint64 chunk_ = 0;
};

}  // namespace nimbrel
