#include "storage/archive/ArchiveReader.h"

#include <QtEndian>
#include <algorithm>

namespace nimbrel {
namespace {

quint32 number(const QByteArray& bytes) {
  return qFromBigEndian<quint32>(bytes.constData());
}

}  // namespace

std::optional<QByteArray> ArchiveReader::read(qsizetype size) {
  QByteArray bytes(size, Qt::Uninitialized);
  qsizetype done = 0;
  while (done < size) {
    const qint64 got = input_.read(bytes.data() + done, size - done);
    if (got <= 0) return std::nullopt;
    done += got;
  }
  return bytes;
}

std::optional<ArchiveError> ArchiveReader::begin(const QByteArray& passphrase) {
  const auto header = read(archive::kHeaderBytes);
  if (!header || !header->startsWith(archive::kMagic)) return ArchiveError::noArchive;
  header_ = *header;
  const auto byteAt = [this](qsizetype place) { return static_cast<quint8>(header_.at(place)); };
  const qsizetype numbers = archive::kMagic.size();
  if (byteAt(numbers) != archive::kVersion) return ArchiveError::noArchive;
  const archive::Cost cost{byteAt(numbers + 1), byteAt(numbers + 2), byteAt(numbers + 3)};
  if (!cost.isBearable()) return ArchiveError::tooDear;
  cipher_ = archive::cipherFor(passphrase, QByteArrayView(header_).last(archive::kSaltBytes), cost);
  if (!cipher_) return ArchiveError::tooDear;
  return readChunk();
}

std::optional<ArchiveError> ArchiveReader::readChunk() {
  const auto length = read(sizeof(quint32));
  if (!length) return ArchiveError::damaged;
  const quint32 size = number(*length) & ~archive::kLastChunk;
  if (size > archive::kChunkBytes) return chunk_ == 0 ? ArchiveError::wrongPassphrase : ArchiveError::damaged;
  const auto sealed = read(static_cast<qsizetype>(size) + AesGcm::kTagBytes);
  if (!sealed) return ArchiveError::damaged;
  auto plain = cipher_->open(archive::nonceOf(chunk_), header_ + *length, *sealed);
  if (!plain) return chunk_ == 0 ? ArchiveError::wrongPassphrase : ArchiveError::damaged;
  wipe(plain_);
  plain_ = *std::move(plain);
  taken_ = 0;
  ++chunk_;
  last_ = (number(*length) & archive::kLastChunk) != 0;
  return std::nullopt;
}

std::variant<QByteArray, ArchiveError> ArchiveReader::take(qsizetype size) {
  QByteArray bytes;
  while (bytes.size() < size) {
    const qsizetype here = std::min(size - bytes.size(), plain_.size() - taken_);
    bytes.append(plain_.constData() + taken_, here);
    taken_ += here;
    if (bytes.size() == size) break;
    // An empty chunk leads nowhere, and there might be many.
    if (last_ || plain_.isEmpty()) return ArchiveError::damaged;
    if (const auto error = readChunk()) return *error;
  }
  return bytes;
}

std::variant<ArchiveRecord, ArchiveReader::End, ArchiveError> ArchiveReader::next() {
  if (taken_ == plain_.size() && !last_) {
    if (const auto error = readChunk()) return *error;
  }
  if (taken_ == plain_.size() && last_) {
    // Nothing comes after the end.
    if (read(1)) return ArchiveError::damaged;
    return End{};
  }
  const auto head = take(1 + sizeof(quint32));
  if (const auto* const error = std::get_if<ArchiveError>(&head)) return *error;
  const auto& bytes = std::get<QByteArray>(head);
  const quint32 size = number(bytes.sliced(1));
  const auto type = static_cast<ArchiveRecord::Type>(static_cast<quint8>(bytes.at(0)));
  const bool known = type == ArchiveRecord::Type::clip || type == ArchiveRecord::Type::image ||
                     type == ArchiveRecord::Type::rich;
  if (!known || size > archive::kMaxRecordBytes) return ArchiveError::damaged;
  auto data = take(size);
  if (const auto* const error = std::get_if<ArchiveError>(&data)) return *error;
  return ArchiveRecord{type, std::move(std::get<QByteArray>(data))};
}

}  // namespace nimbrel
