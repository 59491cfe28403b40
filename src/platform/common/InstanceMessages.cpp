#include "platform/common/InstanceMessages.h"

#include <QDataStream>
#include <QStringDecoder>
#include <QtEndian>

#include "platform/InstanceClient.h"

namespace nimbrel {
namespace {

constexpr quint8 kVersion = 1;
constexpr auto kStreamVersion = QDataStream::Qt_6_4;
constexpr qsizetype kHeaderBytes = 4;

/// What the rest of a request may take, and each string beside its characters.
constexpr qsizetype kRoomForTheRest = 256;
constexpr qsizetype kRoomOfString = 8;

/// More than any intent takes, in UTF-16 units.
constexpr qsizetype kMaxArgument = 64'000;

/// Keeps a mark of the byte order at the beginning: it is part of what was copied.
QString textOf(const QByteArray& utf8) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  return decoder.decode(utf8);
}

QString takeString(QDataStream& stream) {
  QByteArray utf8;
  stream >> utf8;
  return stream.status() == QDataStream::Ok ? textOf(utf8) : QString();
}

void putStrings(QDataStream& stream, const QStringList& strings) {
  stream << static_cast<quint32>(strings.size());
  for (const QString& string : strings)
    stream << string.toUtf8();
}

QStringList takeStrings(QDataStream& stream) {
  quint32 count = 0;
  stream >> count;
  if (count > kMaxInstanceStrings) stream.setStatus(QDataStream::ReadCorruptData);
  QStringList strings;
  for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i)
    strings.append(takeString(stream));
  return strings;
}

bool isWhole(const QDataStream& stream) {
  return stream.status() == QDataStream::Ok && stream.atEnd();
}

/// Nothing of a message in another version is looked at.
bool takeVersion(QDataStream& stream) {
  stream.setVersion(kStreamVersion);
  quint8 version = 0;
  stream >> version;
  return version == kVersion;
}

QByteArray framed(const QByteArray& body) {
  QByteArray frame(kHeaderBytes, Qt::Uninitialized);
  qToLittleEndian(static_cast<quint32>(body.size()), frame.data());
  return frame + body;
}

QStringList urlsWithRoom(const QStringList& urls) {
  QStringList with;
  qsizetype room = kMaxInstanceRequest - kRoomForTheRest;
  for (const QString& url : urls) {
    const qsizetype cost = url.toUtf8().size() + kRoomOfString;
    if (cost > room || with.size() == kMaxInstanceStrings) continue;
    room -= cost;
    with.append(url);
  }
  return with;
}

QByteArray bodyOf(const IntentReply& reply) {
  QByteArray body;
  QDataStream stream(&body, QIODevice::WriteOnly);
  stream.setVersion(kStreamVersion);
  stream << kVersion << reply.error.toUtf8() << reply.message.toUtf8();
  putStrings(stream, reply.texts);
  stream << reply.paused;
  return body;
}

}  // namespace

QByteArray instanceFrame(const InstanceRequest& request) {
  QByteArray body;
  QDataStream stream(&body, QIODevice::WriteOnly);
  stream.setVersion(kStreamVersion);
  stream << kVersion << static_cast<quint8>(request.kind);
  putStrings(stream, urlsWithRoom(request.urls));
  stream << static_cast<quint8>(request.call.intent) << request.call.argument.left(kMaxArgument).toUtf8();
  return framed(body);
}

QByteArray instanceFrame(const IntentReply& reply) {
  if (reply.texts.size() <= kMaxInstanceStrings) {
    if (const QByteArray body = bodyOf(reply); body.size() <= kMaxInstanceReply) return framed(body);
  }
  return framed(bodyOf({.error = InstanceClient::kNoAnswer.toString()}));
}

std::optional<InstanceRequest> decodedInstanceRequest(const QByteArray& body) {
  QDataStream stream(body);
  if (!takeVersion(stream)) return std::nullopt;
  quint8 kind = 0;
  quint8 intent = 0;
  InstanceRequest request;
  stream >> kind;
  request.urls = takeStrings(stream);
  stream >> intent;
  request.call.argument = takeString(stream);
  if (!isWhole(stream)) return std::nullopt;
  if (kind < quint8(InstanceRequest::Kind::show) || kind > quint8(InstanceRequest::Kind::perform))
    return std::nullopt;
  if (intent > quint8(Intent::listCollections)) return std::nullopt;
  request.kind = InstanceRequest::Kind(kind);
  request.call.intent = Intent(intent);
  return request;
}

std::optional<IntentReply> decodedInstanceReply(const QByteArray& body) {
  QDataStream stream(body);
  if (!takeVersion(stream)) return std::nullopt;
  IntentReply reply;
  reply.error = takeString(stream);
  reply.message = takeString(stream);
  reply.texts = takeStrings(stream);
  stream >> reply.paused;
  if (!isWhole(stream)) return std::nullopt;
  return reply;
}

void InstanceFrameReader::readFrom(QIODevice& device) {
  while (missing() > 0 && device.bytesAvailable() > 0) {
    const QByteArray bytes = device.read(qMin<qint64>(missing(), device.bytesAvailable()));
    if (bytes.isEmpty()) return;
    take(bytes);
  }
}

std::optional<QByteArray> InstanceFrameReader::body() const {
  if (length_ != body_.size()) return std::nullopt;
  return body_;
}

qsizetype InstanceFrameReader::missing() const {
  if (refused_) return 0;
  return length_ ? *length_ - body_.size() : kHeaderBytes - header_.size();
}

void InstanceFrameReader::take(const QByteArray& bytes) {
  if (length_) {
    body_ += bytes;
    return;
  }
  header_ += bytes;
  if (header_.size() < kHeaderBytes) return;
  const auto length = qFromLittleEndian<quint32>(header_.constData());
  refused_ = length > longest_;
  if (!refused_) length_ = static_cast<qsizetype>(length);
}

}  // namespace nimbrel
