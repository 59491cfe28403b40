#include "platform/common/ImageEncoding.h"
#include "platform/common/ImageLimits.h"
#include "platform/linux/imaging/helper/BoundedImage.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include "platform/linux/imaging/helper/ImagingService.h"
#include "support/Pictures.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::encoded;
using testing::noisePicture;
using testing::turnedJpeg;

QString errorOf(const QByteArray& bytes) {
  const auto outcome = decodeImage(bytes);
  const auto* const error = std::get_if<ImageError>(&outcome);
  return error ? error->description : QString();
}

QImage imageOf(const QByteArray& bytes) {
  auto outcome = decodeImage(bytes);
  const auto* const image = std::get_if<QImage>(&outcome);
  return image ? *image : QImage();
}

/// CRC-32 as PNG has it.
quint32 crc32(const QByteArray& bytes) {
  quint32 crc = 0xffffffffU;
  for (const char byte : bytes) {
    crc ^= static_cast<uchar>(byte);
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xedb88320U : 0U);
  }
  return crc ^ 0xffffffffU;
}

QByteArray bigEndian(quint32 number) {
  QByteArray bytes(4, Qt::Uninitialized);
  qToBigEndian(number, bytes.data());
  return bytes;
}

/// A PNG whose header announces a size that its few bytes of data never have.
QByteArray pngThatClaims(quint32 width, quint32 height) {
  QByteArray png = encoded(noisePicture({4, 4}), "png");
  const QByteArray header = QByteArray("IHDR") + bigEndian(width) + bigEndian(height) + png.mid(24, 5);
  png.replace(12, 21, header + bigEndian(crc32(header)));
  return png;
}

TEST(BoundedImage, ReadsTheFormatsThatProgramsOffer) {
  const QImage picture = noisePicture({20, 10});
  for (const char* const format : {"png", "bmp", "tiff", "ppm", "jpeg", "webp", "ico"})
    EXPECT_EQ(imageOf(encoded(picture, format)).size(), picture.size()) << format;
}

TEST(BoundedImage, TellsTheFormatByTheContent) {
  EXPECT_EQ(errorOf(""), u"no es una imagen legible");
  EXPECT_EQ(errorOf("GIF89a"), u"no es una imagen legible");
  EXPECT_EQ(errorOf(QByteArray(100'000, 'x')), u"no es una imagen legible");
}

TEST(BoundedImage, DrawingsThatAreProgramsAreNotRead) {
  EXPECT_FALSE(errorOf("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>").isEmpty());
  EXPECT_FALSE(errorOf("/* XPM */ static char *x[]={\"1 1 1 1\",\"a c #fff\",\"a\"};").isEmpty());
}

TEST(BoundedImage, ADecompressionBombIsRefusedByItsHeader) {
  EXPECT_EQ(errorOf(pngThatClaims(100'000, 100'000)), u"la imagen es demasiado grande (100000 × 100000)");
  EXPECT_EQ(errorOf(pngThatClaims(30'000, 30'000)), u"la imagen es demasiado grande (30000 × 30000)");
  EXPECT_EQ(errorOf(pngThatClaims(40'000, 1)), u"la imagen es demasiado grande (40000 × 1)");
}

TEST(BoundedImage, AnImageThatLiesAboutItsSizeCostsNothing) {
  EXPECT_EQ(errorOf(pngThatClaims(0, 5)), u"no es una imagen legible");
  EXPECT_EQ(errorOf(pngThatClaims(4, 4)), QString());
  // Fewer pixels than announced: what there is may be shown, but never more than was announced.
  const QImage partial = imageOf(pngThatClaims(64, 64));
  EXPECT_TRUE(partial.isNull() || partial.size() == QSize(64, 64));
}

TEST(BoundedImage, ATruncatedImageNeverCrashes) {
  for (const char* const format : {"png", "bmp", "tiff", "jpeg", "webp", "ico"}) {
    const QByteArray whole = encoded(noisePicture({30, 30}), format);
    for (qsizetype length = 0; length < whole.size(); length += 1 + whole.size() / 50)
      static_cast<void>(decodeImage(whole.first(length)));
  }
}

TEST(BoundedImage, ACameraPhotoIsTurnedUpright) {
  QImage wide(64, 32, QImage::Format_RGB32);
  wide.fill(Qt::white);
  EXPECT_EQ(imageOf(turnedJpeg(wide)).size(), QSize(32, 64));
}

TEST(BoundedImage, TheSamePixelsGiveTheSamePngWhateverTheyCameIn) {
  const QImage picture = noisePicture({40, 30});
  const QByteArray png = encodePng(imageOf(encoded(picture, "png")));
  EXPECT_FALSE(png.isEmpty());
  EXPECT_EQ(encodePng(imageOf(encoded(picture.convertToFormat(QImage::Format_ARGB32), "png"))), png);
  EXPECT_EQ(encodePng(imageOf(png)), png);
  EXPECT_NE(encodePng(noisePicture({40, 30}, 2)), png);
}

TEST(BoundedImage, TransparencyAndDeepColourAreKept) {
  QImage glass(4, 4, QImage::Format_ARGB32);
  glass.fill(QColor(10, 20, 30, 40));
  const QImage back = imageOf(encodePng(glass));
  EXPECT_EQ(back.pixelColor(1, 1), QColor(10, 20, 30, 40));
  QImage deep(4, 4, QImage::Format_RGBA64);
  deep.fill(QColor::fromRgba64(1000, 2001, 3002));
  EXPECT_EQ(imageOf(encodePng(deep)).pixelColor(2, 2).rgba64(), qRgba64(1000, 2001, 3002, 65535));
}

TEST(BoundedImage, NoCommentsStayInWhatIsStored) {
  QImage picture = noisePicture({4, 4});
  picture.setText(u"Author"_s, u"somebody at home"_s);
  const QByteArray noted = encoded(picture, "png");
  ASSERT_TRUE(noted.contains("somebody"));
  EXPECT_FALSE(encodePng(imageOf(noted)).contains("somebody"));
}

TEST(BoundedImage, AThumbnailFitsItsSquareAndNeverGrows) {
  EXPECT_EQ(thumbnailOf(noisePicture({1000, 500}), 256).size(), QSize(256, 128));
  EXPECT_EQ(thumbnailOf(noisePicture({100, 50}), 256).size(), QSize(100, 50));
  EXPECT_EQ(thumbnailOf(noisePicture({1, 3000}), 256).size(), QSize(1, 256));
  EXPECT_EQ(thumbnailOf(noisePicture({10, 10}), 0).size(), QSize(1, 1));
}

TEST(ImagingService, AnswersWithWhatWasAskedFor) {
  const QByteArray bmp = encoded(noisePicture({100, 50}), "bmp");
  const ImagingReply png =
      answer({.task = ImagingTask::encodePng, .maxPixelSize = 10, .image = bmp}, nullptr);
  EXPECT_EQ(png.error, QString());
  EXPECT_EQ(imageOf(png.data).size(), QSize(100, 50));
  EXPECT_EQ(png.thumbnail.size(), QSize(10, 5));
  const ImagingReply broken =
      answer({.task = ImagingTask::encodePng, .maxPixelSize = 10, .image = "?"}, nullptr);
  EXPECT_EQ(broken.error, u"no es una imagen legible");
}

TEST(ImagingService, WithoutLanguageModelsThereIsNoText) {
  const ImagingReply reply = answer(
      {.task = ImagingTask::recognizeText, .maxPixelSize = 0, .image = encoded(noisePicture({9, 9}), "png")},
      nullptr);
  EXPECT_EQ(reply.error, u"faltan los modelos de idioma");
}

}  // namespace
}  // namespace nimbrel
