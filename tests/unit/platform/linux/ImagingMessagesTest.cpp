#include "platform/linux/imaging/ImagingMessages.h"

#include <gtest/gtest.h>

#include <QDataStream>
#include <QIODevice>

#include "support/Pictures.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::noisePicture;

ImagingReply fullReply() {
  ImagingReply reply;
  reply.error = u"algo"_s;
  reply.data = "png bytes";
  reply.thumbnail = noisePicture({3, 2}).convertToFormat(QImage::Format_ARGB32_Premultiplied);
  reply.lines = {{u"niño"_s, QRectF(1, 2, 3, 4)}, {u"two"_s, QRectF(5, 6, 7, 8)}};
  return reply;
}

TEST(ImagingMessages, RequestsAndRepliesComeBackAsTheyWere) {
  const ImagingRequest request{.task = ImagingTask::encodePng, .maxPixelSize = 256, .image = "bytes"};
  EXPECT_EQ(decodeRequest(encodeRequest(request)), request);
  EXPECT_EQ(decodeReply(encodeReply(fullReply())), fullReply());
  EXPECT_EQ(decodeReply(encodeReply({})), ImagingReply());
}

TEST(ImagingMessages, NoPrefixOfAMessageIsAMessage) {
  const QByteArray request = encodeRequest({.task = ImagingTask::thumbnail, .maxPixelSize = 1, .image = "x"});
  for (qsizetype length = 0; length < request.size(); ++length)
    EXPECT_FALSE(decodeRequest(request.first(length))) << length;
  const QByteArray reply = encodeReply(fullReply());
  for (qsizetype length = 0; length < reply.size(); ++length)
    EXPECT_FALSE(decodeReply(reply.first(length))) << length;
  EXPECT_FALSE(decodeRequest(request + 'x'));
  EXPECT_FALSE(decodeReply(reply + 'x'));
}

TEST(ImagingMessages, UnknownTasksAndSizesAreRefused) {
  EXPECT_FALSE(decodeRequest(encodeRequest({.task = ImagingTask(0), .maxPixelSize = 1, .image = "x"})));
  EXPECT_FALSE(decodeRequest(encodeRequest({.task = ImagingTask(77), .maxPixelSize = 1, .image = "x"})));
  EXPECT_FALSE(decodeRequest(
      encodeRequest({.task = ImagingTask::thumbnail, .maxPixelSize = kMaxThumbnailSide + 1, .image = "x"})));
  EXPECT_FALSE(
      decodeRequest(encodeRequest({.task = ImagingTask::thumbnail, .maxPixelSize = -1, .image = "x"})));
}

TEST(ImagingMessages, AThumbnailThatClaimsMorePixelsThanItBringsIsRefused) {
  QByteArray frame;
  QDataStream stream(&frame, QIODevice::WriteOnly);
  stream << QByteArray() << QByteArray() << qint32(4096) << qint32(4096) << qint32(0);
  EXPECT_FALSE(decodeReply(frame));
  frame.clear();
  QDataStream negative(&frame, QIODevice::WriteOnly);
  negative << QByteArray() << QByteArray() << qint32(-1) << qint32(5) << qint32(0);
  EXPECT_FALSE(decodeReply(frame));
}

TEST(ImagingMessages, ALineCountBeyondReasonIsRefused) {
  QByteArray frame;
  QDataStream stream(&frame, QIODevice::WriteOnly);
  stream << QByteArray() << QByteArray() << qint32(0) << qint32(0) << qint32(2'000'000'000);
  EXPECT_FALSE(decodeReply(frame));
}

TEST(ImagingMessages, MoreTextThanAnyPictureHoldsIsRefused) {
  ImagingReply reply;
  reply.lines = {{QString(600'000, u'x'), {}}, {QString(600'000, u'x'), {}}};
  EXPECT_FALSE(decodeReply(encodeReply(reply)));
}

TEST(ImagingMessages, AHeaderTellsTheLengthUpToTheLimit) {
  EXPECT_EQ(announcedLength(frameHeader("12345")), 5);
  EXPECT_EQ(announcedLength(QByteArray("\xff\xff\xff\xff", 4)), std::nullopt);
}

}  // namespace
}  // namespace nimbrel
