#include "platform/common/InstanceMessages.h"

#include <gmock/gmock.h>

#include <QBuffer>
#include <QDataStream>
#include <QtEndian>
#include <random>

#include "platform/InstanceClient.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using Kind = InstanceRequest::Kind;

constexpr qsizetype kHeader = 4;

/// A frame without its length.
QByteArray bodyOf(const InstanceRequest& request) {
  return instanceFrame(request).sliced(kHeader);
}
QByteArray bodyOf(const IntentReply& reply) {
  return instanceFrame(reply).sliced(kHeader);
}

InstanceRequest fullRequest() {
  return {.kind = Kind::perform,
          .urls = {u"nimbrel://add?text=a"_s, QString()},
          .call = {Intent::pasteFromCollection, u"casa ñ 🙂"_s}};
}
IntentReply fullReply() {
  return {.error = u"emptyHistory"_s,
          .message = u"No hay."_s,
          .texts = {u"a\nb"_s, QString(), u"🙂"_s},
          .paused = true};
}

TEST(InstanceMessages, RequestsAndRepliesComeBackAsTheyWere) {
  for (const Kind kind : {Kind::show, Kind::showCollections, Kind::openUrls, Kind::quit, Kind::perform}) {
    const InstanceRequest request{.kind = kind};
    EXPECT_EQ(decodedInstanceRequest(bodyOf(request)), request);
  }
  EXPECT_EQ(decodedInstanceRequest(bodyOf(fullRequest())), fullRequest());
  EXPECT_EQ(decodedInstanceReply(bodyOf(fullReply())), fullReply());
  EXPECT_EQ(decodedInstanceReply(bodyOf(IntentReply())), IntentReply());
}

TEST(InstanceMessages, TextsMayHoldNullsAndByteOrderMarks) {
  const QString odd = QChar(QChar::ByteOrderMark) + u"a\0b"_s + QChar(QChar::ByteOrderMark);
  const IntentReply reply{.message = odd, .texts = {odd}};
  EXPECT_EQ(decodedInstanceReply(bodyOf(reply)), reply);
}

TEST(InstanceMessages, NoPrefixOfAMessageIsAMessageAndNothingLonger) {
  const QByteArray request = bodyOf(fullRequest());
  for (qsizetype length = 0; length < request.size(); ++length)
    EXPECT_FALSE(decodedInstanceRequest(request.first(length))) << length;
  const QByteArray reply = bodyOf(fullReply());
  for (qsizetype length = 0; length < reply.size(); ++length)
    EXPECT_FALSE(decodedInstanceReply(reply.first(length))) << length;
  EXPECT_FALSE(decodedInstanceRequest(request + 'x'));
  EXPECT_FALSE(decodedInstanceReply(reply + 'x'));
}

TEST(InstanceMessages, AnyBytesGiveAMessageOrNone) {
  std::mt19937 random(1);
  for (int round = 0; round < 2'000; ++round) {
    QByteArray request = bodyOf(fullRequest());
    QByteArray reply = bodyOf(fullReply());
    for (QByteArray* const bytes : {&request, &reply}) {
      for (int change = 0; change < 3; ++change)
        (*bytes)[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes->size()))] =
            static_cast<char>(random());
    }
    if (const auto decoded = decodedInstanceRequest(request)) {
      EXPECT_EQ(decodedInstanceRequest(bodyOf(*decoded)), decoded);
    }
    if (const auto decoded = decodedInstanceReply(reply)) {
      EXPECT_EQ(decodedInstanceReply(bodyOf(*decoded)), decoded);
    }
  }
}

TEST(InstanceMessages, OtherVersionsAreNotUnderstood) {
  QByteArray request = bodyOf(fullRequest());
  request[0] = 2;
  EXPECT_FALSE(decodedInstanceRequest(request));
  QByteArray reply = bodyOf(fullReply());
  reply[0] = 0;
  EXPECT_FALSE(decodedInstanceReply(reply));
}

TEST(InstanceMessages, UnknownRequestsAndIntentsAreRefused) {
  EXPECT_FALSE(decodedInstanceRequest(bodyOf({.kind = Kind(0)})));
  EXPECT_FALSE(decodedInstanceRequest(bodyOf({.kind = Kind(77)})));
  EXPECT_FALSE(decodedInstanceRequest(bodyOf({.kind = Kind::perform, .call = {Intent(77), {}}})));
}

TEST(InstanceMessages, MoreStringsThanItBringsAreNotBelieved) {
  for (const quint32 count : {10'000U, 10'001U, 0xffffffffU}) {
    QByteArray body;
    QDataStream stream(&body, QIODevice::WriteOnly);
    stream << quint8(1) << QByteArray() << QByteArray() << count;
    EXPECT_FALSE(decodedInstanceReply(body)) << count;
  }
}

TEST(InstanceMessages, UrlsWithoutRoomAreLeftOut) {
  const InstanceRequest request{
      .kind = Kind::openUrls,
      .urls = {u"x:1"_s, QString(kMaxInstanceRequest, u'x'), QString(kMaxInstanceRequest / 2, u'y'),
               QString(kMaxInstanceRequest / 2, u'z'), u"x:2"_s}};
  const QByteArray body = bodyOf(request);
  EXPECT_LE(body.size(), kMaxInstanceRequest);
  const auto decoded = decodedInstanceRequest(body);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->urls, (QStringList{u"x:1"_s, QString(kMaxInstanceRequest / 2, u'y'), u"x:2"_s}));
  const auto many = decodedInstanceRequest(bodyOf({.urls = QStringList(20'000, u"x"_s)}));
  ASSERT_TRUE(many);
  EXPECT_EQ(many->urls.size(), kMaxInstanceStrings);
}

TEST(InstanceMessages, AnArgumentIsSentAsFarAsShowsThatItIsTooLong) {
  const auto decoded =
      decodedInstanceRequest(bodyOf({.call = {Intent::searchHistory, QString(9'000'000, u'ñ')}}));
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->call.argument, QString(64'000, u'ñ'));
}

TEST(InstanceMessages, AsManyTextsAsASearchGivesFitInAReplyAndMoreAreAnError) {
  const IntentReply most{.texts = QStringList(20, QString(1'000'000, u'x'))};
  EXPECT_EQ(decodedInstanceReply(bodyOf(most)), most);
  const IntentReply error{.error = InstanceClient::kNoAnswer.toString()};
  const IntentReply tooLong{.texts = QStringList(40, QString(1'000'000, u'x'))};
  EXPECT_EQ(decodedInstanceReply(bodyOf(tooLong)), error);
  const IntentReply tooMany{.texts = QStringList(10'001, QString())};
  EXPECT_EQ(decodedInstanceReply(bodyOf(tooMany)), error);
}

TEST(InstanceFrameReader, PutsAFrameTogetherAndLeavesWhatIsBehindIt) {
  const QByteArray frame = instanceFrame(fullRequest());
  QByteArray bytes = frame + "rest";
  QBuffer device(&bytes);
  ASSERT_TRUE(device.open(QIODevice::ReadOnly));
  InstanceFrameReader reader(kMaxInstanceRequest);
  reader.readFrom(device);
  ASSERT_TRUE(reader.body());
  EXPECT_EQ(decodedInstanceRequest(*reader.body()), fullRequest());
  EXPECT_EQ(device.bytesAvailable(), 4);
}

TEST(InstanceFrameReader, TakesAFrameByteByByte) {
  InstanceFrameReader reader(kMaxInstanceRequest);
  for (const char byte : instanceFrame(fullReply())) {
    EXPECT_FALSE(reader.body());
    QByteArray one(1, byte);
    QBuffer device(&one);
    ASSERT_TRUE(device.open(QIODevice::ReadOnly));
    reader.readFrom(device);
  }
  ASSERT_TRUE(reader.body());
  EXPECT_EQ(decodedInstanceReply(*reader.body()), fullReply());
}

TEST(InstanceFrameReader, RefusesAFrameThatIsTooLongBeforeItHasCome) {
  for (const quint32 length : {11U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
    QByteArray bytes(kHeader, '\0');
    qToLittleEndian(length, bytes.data());
    bytes += QByteArray(100, 'x');
    QBuffer device(&bytes);
    ASSERT_TRUE(device.open(QIODevice::ReadOnly));
    InstanceFrameReader reader(10);
    reader.readFrom(device);
    EXPECT_TRUE(reader.isRefused());
    EXPECT_FALSE(reader.body());
    EXPECT_EQ(device.bytesAvailable(), 100);
  }
}

TEST(InstanceFrameReader, AFrameWithNothingInItIsWholeAndNoMessage) {
  QByteArray bytes(kHeader, '\0');
  QBuffer device(&bytes);
  ASSERT_TRUE(device.open(QIODevice::ReadOnly));
  InstanceFrameReader reader(10);
  reader.readFrom(device);
  ASSERT_TRUE(reader.body());
  EXPECT_FALSE(decodedInstanceRequest(*reader.body()));
}

}  // namespace
}  // namespace nimbrel
