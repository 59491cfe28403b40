#include <gmock/gmock.h>

#include <QBuffer>

#include "storage/archive/ArchiveReader.h"
#include "storage/archive/ArchiveWriter.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using Type = ArchiveRecord::Type;

/// Cheap enough to be tried a thousand times.
constexpr archive::Cost kCheap{4, 1, 1};

QByteArray archived(const QList<ArchiveRecord>& records, const QByteArray& passphrase = "palabra",
                    const archive::Cost& cost = kCheap) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  SystemRandom random;
  ArchiveWriter writer(buffer, random);
  EXPECT_TRUE(writer.begin(passphrase, cost));
  for (const ArchiveRecord& record : records)
    EXPECT_TRUE(writer.write(record));
  EXPECT_TRUE(writer.finish());
  return buffer.data();
}

/// What an archive holds, or why it does not.
struct Read {
  QList<ArchiveRecord> records;
  std::optional<ArchiveError> error;
};

Read read(QByteArray bytes, const QByteArray& passphrase = "palabra") {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  ArchiveReader reader(buffer);
  Read result;
  result.error = reader.begin(passphrase);
  while (!result.error) {
    auto next = reader.next();
    if (std::holds_alternative<ArchiveReader::End>(next)) break;
    if (const auto* const error = std::get_if<ArchiveError>(&next))
      result.error = *error;
    else
      result.records.append(std::get<ArchiveRecord>(next));
  }
  return result;
}

TEST(Archive, GivesBackWhatWasWritten) {
  const QList<ArchiveRecord> records{{Type::clip, "{}"},
                                     {Type::image, QByteArray(5'000'000, 'p')},
                                     {Type::clip, QByteArray()},
                                     {Type::rich, QByteArray(archive::kChunkBytes, 'r')}};
  const Read result = read(archived(records));
  EXPECT_EQ(result.error, std::nullopt);
  EXPECT_EQ(result.records, records);
}

TEST(Archive, MayBeEmptyOrEndWithAChunk) {
  EXPECT_EQ(read(archived({})).error, std::nullopt);
  const QList<ArchiveRecord> full{{Type::clip, QByteArray(archive::kChunkBytes - 5, 'x')}};
  const Read result = read(archived(full));
  EXPECT_EQ(result.error, std::nullopt);
  EXPECT_EQ(result.records, full);
}

TEST(Archive, ShowsNothingOfWhatIsInIt) {
  const QByteArray bytes = archived({{Type::clip, "una frase que se reconoce"}});
  EXPECT_TRUE(bytes.startsWith("NIMBRELX"));
  EXPECT_FALSE(bytes.contains("frase"));
  EXPECT_NE(bytes, archived({{Type::clip, "una frase que se reconoce"}}));
}

TEST(Archive, NeedsItsPassphrase) {
  const QByteArray bytes = archived({{Type::clip, "{}"}});
  EXPECT_EQ(read(bytes, "Palabra").error, ArchiveError::wrongPassphrase);
  EXPECT_EQ(read(bytes, "").error, ArchiveError::wrongPassphrase);
}

TEST(Archive, EveryAlteredByteIsNoticed) {
  const QByteArray bytes = archived({{Type::clip, "{\"text\":\"hola\"}"}, {Type::image, "pixeles"}});
  for (qsizetype place = 0; place < bytes.size(); ++place) {
    QByteArray altered = bytes;
    altered[place] = static_cast<char>(altered.at(place) ^ 1);
    EXPECT_TRUE(read(altered).error.has_value()) << place;
  }
}

TEST(Archive, EveryMissingByteIsNoticed) {
  const QByteArray bytes =
      archived({{Type::clip, "{}"}, {Type::image, QByteArray(archive::kChunkBytes, 'p')}});
  for (const qsizetype size : {qsizetype{0}, qsizetype{1}, qsizetype{27}, qsizetype{28}, qsizetype{40},
                               qsizetype{archive::kChunkBytes + 48}, bytes.size() - 1})
    EXPECT_TRUE(read(bytes.first(size)).error.has_value()) << size;
  EXPECT_TRUE(read(bytes + 'x').error.has_value());
}

TEST(Archive, ChunksCannotBeLeftOutOrSwapped) {
  const QByteArray bytes = archived({{Type::image, QByteArray(3 * archive::kChunkBytes, 'p')}});
  const qsizetype chunk = 4 + archive::kChunkBytes + 16;
  const auto piece = [&](int number) { return bytes.mid(archive::kHeaderBytes + number * chunk, chunk); };
  const QByteArray header = bytes.first(archive::kHeaderBytes);
  const QByteArray rest = bytes.mid(archive::kHeaderBytes + 2 * chunk);
  ASSERT_EQ(read(header + piece(0) + piece(1) + rest).error, std::nullopt);
  EXPECT_EQ(read(header + piece(0) + rest).error, ArchiveError::damaged);
  EXPECT_EQ(read(header + piece(1) + piece(0) + rest).error, ArchiveError::wrongPassphrase);
  EXPECT_EQ(read(header + piece(0) + piece(0) + rest).error, ArchiveError::damaged);
}

TEST(Archive, RefusesWhatIsNone) {
  for (const QByteArray& bytes : {QByteArray(), "NIMBREL"_ba, "SQLite format 3"_ba + QByteArray(100, '\0'),
                                  "NIMBRELX\2"_ba + QByteArray(100, '\0')})
    EXPECT_EQ(read(bytes).error, ArchiveError::noArchive);
}

TEST(Archive, DoesNotTakeTheMemoryThatAnArchiveAsksFor) {
  for (const archive::Cost& cost :
       {archive::Cost{21, 8, 1}, archive::Cost{20, 32, 1}, archive::Cost{17, 8, 200}, archive::Cost{0, 8, 1},
        archive::Cost{17, 0, 1}, archive::Cost{255, 255, 255}}) {
    EXPECT_FALSE(cost.isBearable());
    QByteArray bytes = archived({});
    bytes[9] = static_cast<char>(cost.log2N);
    bytes[10] = static_cast<char>(cost.r);
    bytes[11] = static_cast<char>(cost.p);
    EXPECT_EQ(read(bytes).error, ArchiveError::tooDear);
  }
  EXPECT_TRUE(archive::Cost().isBearable());
}

TEST(Archive, RecordsThatMakeNoSenseAreDamage) {
  // Sealed as they should be, by somebody who knows the passphrase.
  const auto sealedAs = [](const QByteArray& content) {
    const QByteArray salt(archive::kSaltBytes, 's');
    const QByteArray header = archive::kMagic.toByteArray() + "\1\4\1\1" + salt;
    const auto cipher = archive::cipherFor("palabra", salt, kCheap);
    const QByteArray length = archive::bigEndian(static_cast<quint32>(content.size()) | archive::kLastChunk);
    QByteArray sealed(content.size() + AesGcm::kTagBytes, '\0');
    EXPECT_TRUE(cipher->seal(archive::nonceOf(0), header + length, content, sealed.data()));
    return header + length + sealed;
  };
  EXPECT_EQ(read(sealedAs(QByteArray("\1\0\0\0\1x", 6))).records.size(), 1);
  EXPECT_EQ(read(sealedAs(QByteArray("\1\0\0\0\2x", 6))).error, ArchiveError::damaged);
  EXPECT_EQ(read(sealedAs(QByteArray("\x09\0\0\0\1x", 6))).error, ArchiveError::damaged);
  EXPECT_EQ(read(sealedAs(QByteArray("\1\xff\xff\xff\xffx", 6))).error, ArchiveError::damaged);
  EXPECT_EQ(read(sealedAs(QByteArray("\1\0\0", 3))).error, ArchiveError::damaged);
}

TEST(Archive, AgreesWithTheTestVectorOfScrypt) {
  // RFC 7914, section 12, the first vector's 32 bytes, as a key: what it seals opens under the same.
  const auto cipher = archive::cipherFor("", "", {4, 1, 1});
  ASSERT_TRUE(cipher);
  const AesGcm expected(
      QByteArray::fromHex("77d6576238657b203b19ca42c18a0497f16b4844e3074ae8dfdffa3fede21442"));
  QByteArray sealed(4 + AesGcm::kTagBytes, '\0');
  ASSERT_TRUE(cipher->seal(archive::nonceOf(7), "c", "hola", sealed.data()));
  EXPECT_EQ(expected.open(archive::nonceOf(7), "c", sealed), "hola"_ba);
  EXPECT_EQ(expected.open(archive::nonceOf(7), "d", sealed), std::nullopt);
  EXPECT_EQ(expected.open(archive::nonceOf(8), "c", sealed), std::nullopt);
}

TEST(Archive, IsNotWrittenWithoutRandomness) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  testing::FailingRandom random;
  EXPECT_FALSE(ArchiveWriter(buffer, random).begin("palabra", kCheap));
}

}  // namespace
}  // namespace nimbrel
