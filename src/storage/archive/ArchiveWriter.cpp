#include "storage/archive/ArchiveWriter.h"

namespace nimbrel {

bool ArchiveWriter::begin(const QByteArray& passphrase, const archive::Cost& cost) {
  const auto salt = random_.bytes(archive::kSaltBytes);
  if (!salt) return false;
  cipher_ = archive::cipherFor(passphrase, *salt, cost);
  header_ = archive::kMagic.toByteArray();
  for (const int number : {archive::kVersion, cost.log2N, cost.r, cost.p})
    header_.append(static_cast<char>(number));
  header_ += *salt;
  // One allocation, which is wiped; growing would leave copies behind.
  pending_.reserve(archive::kChunkBytes);
  return cipher_ && output_.write(header_) == header_.size();
}

bool ArchiveWriter::write(const ArchiveRecord& record) {
  if (static_cast<quint64>(record.data.size()) > archive::kMaxRecordBytes) return false;
  const QByteArray type(1, static_cast<char>(record.type));
  return append(type) && append(archive::bigEndian(static_cast<quint32>(record.data.size()))) &&
         append(record.data);
}

bool ArchiveWriter::append(QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const qsizetype taken = std::min<qsizetype>(bytes.size(), archive::kChunkBytes - pending_.size());
    pending_.append(bytes.first(taken));
    bytes = bytes.sliced(taken);
    if (pending_.size() == archive::kChunkBytes && !writeChunk(0)) return false;
  }
  return true;
}

bool ArchiveWriter::finish() {
  return writeChunk(archive::kLastChunk);
}

bool ArchiveWriter::writeChunk(quint32 mark) {
  const QByteArray length = archive::bigEndian(static_cast<quint32>(pending_.size()) | mark);
  QByteArray sealed(pending_.size() + AesGcm::kTagBytes, Qt::Uninitialized);
  if (!cipher_->seal(archive::nonceOf(chunk_), header_ + length, pending_, sealed.data())) return false;
  ++chunk_;
  wipe(pending_.data(), static_cast<std::size_t>(pending_.size()));
  pending_.resize(0);
  return output_.write(length) == length.size() && output_.write(sealed) == sealed.size();
}

}  // namespace nimbrel
