#include <gmock/gmock.h>

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <QTransform>
#include <csignal>

#include "platform/linux/imaging/ConfinedImaging.h"
#include "support/Pictures.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace testing;
using ::testing::HasSubstr;

QString helperProgram() {
  return QStringLiteral(NIMBREL_IMAGING);
}

QStringList textsOf(const std::variant<QList<RecognizedLine>, ImageError>& outcome) {
  QStringList texts;
  if (const auto* const lines = std::get_if<QList<RecognizedLine>>(&outcome)) {
    for (const RecognizedLine& line : *lines)
      texts.append(line.text);
  }
  return texts;
}

template <typename Value>
QString errorOf(const std::variant<Value, ImageError>& outcome) {
  const auto* const error = std::get_if<ImageError>(&outcome);
  return error ? error->description : QString();
}

/// A line of /proc/PID/status.
QByteArray statusOf(pid_t pid, const QByteArray& field) {
  QFile file(u"/proc/%1/status"_s.arg(pid));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const auto lines = file.readAll().split('\n');
  for (const QByteArray& line : lines) {
    if (line.startsWith(field + ':')) return line.mid(field.size() + 1).trimmed();
  }
  return {};
}

QString script(const QTemporaryDir& folder, const QByteArray& body) {
  const QString path = folder.filePath(u"helper"_s);
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("#!/bin/sh\n" + body + "\n");
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return path;
}

const TextStyle kPlain{.family = u"DejaVu Sans"_s};

TEST(ImagingHelper, MakesPngAndThumbnailInOneGo) {
  ConfinedImageCodec codec(helperProgram());
  const QImage picture = screenshotPicture({800, 400});
  const auto outcome = codec.encodePng(encoded(picture, "bmp"), 256, {});
  const auto* const result = std::get_if<ImageCodec::Encoded>(&outcome);
  ASSERT_NE(result, nullptr) << errorOf(outcome).toStdString();
  EXPECT_EQ(result->thumbnail.size(), QSize(256, 128));
  QImage back;
  ASSERT_TRUE(back.loadFromData(result->png, "png"));
  EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), picture);
}

TEST(ImagingHelper, ConvertsToTheFormatsThatProgramsAskFor) {
  ConfinedImageCodec codec(helperProgram());
  const QImage picture = screenshotPicture({60, 40});
  const QByteArray png = encoded(picture, "png");
  for (const auto& [format, name] :
       {std::pair(ImageCodec::Format::tiff, "tiff"), std::pair(ImageCodec::Format::bmp, "bmp")}) {
    const auto outcome = codec.convert(png, format, {});
    ASSERT_TRUE(std::holds_alternative<QByteArray>(outcome)) << name;
    QImage back;
    ASSERT_TRUE(back.loadFromData(std::get<QByteArray>(outcome), name)) << name;
    EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), picture) << name;
  }
}

TEST(ImagingHelper, WorksBehindTheFilterOfSystemCallsOnly) {
  ConfinedImageCodec codec(helperProgram());
  ASSERT_TRUE(errorOf(codec.thumbnail(encoded(noisePicture({8, 8}), "png"), 4, {})).isEmpty());
  const auto pid = codec.helper().processId();
  ASSERT_TRUE(pid);
  EXPECT_EQ(statusOf(*pid, "Seccomp"), "2");
  EXPECT_EQ(statusOf(*pid, "NoNewPrivs"), "1");
}

TEST(ImagingHelper, AnImageThatCannotBeReadIsAnErrorAndNothingElse) {
  ConfinedImageCodec codec(helperProgram());
  EXPECT_EQ(errorOf(codec.thumbnail("this is no image", 64, {})), u"no es una imagen legible");
  EXPECT_TRUE(errorOf(codec.thumbnail(encoded(noisePicture({8, 8}), "png"), 4, {})).isEmpty());
}

TEST(ImagingHelper, AKilledHelperCostsNothingAfterwards) {
  ConfinedImageCodec codec(helperProgram());
  const QByteArray png = encoded(noisePicture({8, 8}), "png");
  ASSERT_TRUE(errorOf(codec.thumbnail(png, 4, {})).isEmpty());
  kill(*codec.helper().processId(), SIGKILL);
  static_cast<void>(codec.thumbnail(png, 4, {}));
  EXPECT_TRUE(errorOf(codec.thumbnail(png, 4, {})).isEmpty());
}

TEST(ImagingHelper, AHelperThatHasEndedWhenIdleIsStartedAgainUnnoticed) {
  const QTemporaryDir folder;
  // Ends in peace at its first start, before it has read anything, and is the real one from then on.
  const QString program =
      script(folder, "if [ ! -e " + folder.path().toUtf8() + "/seen ]; then : >" + folder.path().toUtf8() +
                         "/seen; exit 0; fi; exec " + helperProgram().toUtf8() + " \"$@\"");
  ConfinedImageCodec codec(program);
  EXPECT_EQ(errorOf(codec.thumbnail(encoded(noisePicture({8, 8}), "png"), 4, {})), QString());
}

TEST(ImagingHelper, ADeadHelperIsNotLeftLyingAbout) {
  ConfinedImageCodec codec(helperProgram());
  ASSERT_TRUE(errorOf(codec.thumbnail(encoded(noisePicture({8, 8}), "png"), 4, {})).isEmpty());
  const auto pid = codec.helper().processId();
  ASSERT_TRUE(pid);
  kill(*pid, SIGKILL);
  EXPECT_TRUE(QTest::qWaitFor([&] { return statusOf(*pid, "State").isEmpty(); }));
}

TEST(ImagingHelper, ASignalToEverybodyDoesNotEndIt) {
  ConfinedImageCodec codec(helperProgram());
  const QByteArray png = encoded(noisePicture({8, 8}), "png");
  ASSERT_TRUE(errorOf(codec.thumbnail(png, 4, {})).isEmpty());
  const auto pid = codec.helper().processId();
  for (const int number : {SIGTERM, SIGINT, SIGHUP})
    kill(*pid, number);
  EXPECT_TRUE(errorOf(codec.thumbnail(png, 4, {})).isEmpty());
  EXPECT_EQ(codec.helper().processId(), pid);
}

TEST(ImagingHelper, ADamagedPictureShowsNothingOfTheOneBefore) {
  ConfinedImageCodec codec(helperProgram());
  QImage secret(1200, 900, QImage::Format_RGB32);
  secret.fill(QColor(0x5ac37e));
  QImage large(1200, 900, QImage::Format_RGB32);
  large.fill(Qt::white);
  // Only the header and a few rows of it.
  const QByteArray damaged = encoded(large, "bmp").first(20'000);
  for (int round = 0; round < 3; ++round) {
    ASSERT_TRUE(errorOf(codec.encodePng(encoded(secret, "png"), 256, {})).isEmpty());
    ASSERT_TRUE(errorOf(codec.convert(encoded(secret, "png"), ImageCodec::Format::tiff, {})).isEmpty());
    const auto outcome = codec.encodePng(damaged, 256, {});
    const auto* const result = std::get_if<ImageCodec::Encoded>(&outcome);
    if (!result) continue;
    QImage shown;
    ASSERT_TRUE(shown.loadFromData(result->png, "png"));
    for (int y = 0; y < shown.height(); ++y) {
      for (int x = 0; x < shown.width(); ++x)
        ASSERT_NE(shown.pixel(x, y), secret.pixel(0, 0)) << x << ", " << y;
    }
  }
}

TEST(ImagingHelper, AnAnswerOfAnotherSizeIsAnError) {
  const QTemporaryDir folder;
  ImagingReply lie;
  lie.data = "no png";
  lie.thumbnail = noisePicture({300, 10}).convertToFormat(QImage::Format_ARGB32_Premultiplied);
  const QByteArray frame = encodeReply(lie);
  QFile answer(folder.filePath(u"answer"_s));
  ASSERT_TRUE(answer.open(QIODevice::WriteOnly));
  answer.write(frameHeader(frame) + frame);
  answer.close();
  ConfinedImageCodec codec(script(folder, "cat " + answer.fileName().toUtf8() + "; sleep 5"));
  EXPECT_EQ(errorOf(codec.thumbnail("x", 256, {})), u"el proceso de imágenes ha contestado algo sin sentido");
}

TEST(ImagingHelper, AMissingHelperIsAnError) {
  ConfinedImageCodec codec(u"/nonexistent/helper"_s);
  EXPECT_EQ(errorOf(codec.thumbnail(encoded(noisePicture({8, 8}), "png"), 4, {})),
            u"no se pudo iniciar el proceso de imágenes");
}

TEST(ImagingHelper, AHelperThatCrashesIsAnError) {
  const QTemporaryDir folder;
  ConfinedImageCodec codec(script(folder, "kill -SEGV $$"));
  EXPECT_EQ(errorOf(codec.thumbnail("x", 4, {})), u"el proceso de imágenes ha fallado");
}

TEST(ImagingHelper, AHelperThatHangsIsKilledInTime) {
  const QTemporaryDir folder;
  ImagingHelper helper(script(folder, "exec sleep 1000"), ImagingSkill::codec, 200ms);
  EXPECT_EQ(errorOf(helper.ask({.task = ImagingTask::thumbnail, .maxPixelSize = 4, .image = "x"})),
            u"la imagen tarda demasiado");
  EXPECT_FALSE(helper.processId());
}

TEST(ImagingHelper, AHelperThatClosesItsChannelAndLivesOnIsKilled) {
  const QTemporaryDir folder;
  ImagingHelper helper(script(folder, "exec sleep 1000 0<&- 1>&-"), ImagingSkill::codec, 10s);
  EXPECT_EQ(errorOf(helper.ask({.task = ImagingTask::thumbnail, .maxPixelSize = 4, .image = "x"})),
            u"el proceso de imágenes ha fallado");
}

TEST(ImagingHelper, AHelperThatTalksNonsenseIsAnError) {
  const QTemporaryDir folder;
  for (const char* const nonsense : {"printf '\\377\\377\\377\\377'", "printf '\\004\\0\\0\\0abcd'", "yes"}) {
    ImagingHelper helper(script(folder, nonsense), ImagingSkill::codec, 5s);
    EXPECT_EQ(errorOf(helper.ask({.task = ImagingTask::thumbnail, .maxPixelSize = 4, .image = "x"})),
              u"el proceso de imágenes ha fallado")
        << nonsense;
  }
}

TEST(TextRecognition, ReadsSpanishAndEnglishInManyFontsAndSizes) {
  ConfinedTextRecognizer recognizer(helperProgram());
  const QStringList lines{u"La canción del niño empezó mañana"_s, u"The quick brown fox jumps over"_s,
                          u"Factura número 4821 por pagar"_s};
  const QStringList words = lines.join(u' ').split(u' ');
  for (const QString& family : {u"DejaVu Sans"_s, u"DejaVu Serif"_s, u"DejaVu Sans Mono"_s, u"Inter"_s}) {
    for (const int size : {13, 18, 32, 60}) {
      for (const bool dark : {false, true}) {
        const TextStyle style{.family = family,
                              .pixelSize = size,
                              .ink = dark ? QColor(0xe8e8e8) : QColor(0x202020),
                              .paper = dark ? QColor(0x1e1f22) : QColor(Qt::white)};
        const auto found = textsOf(recognizer.recognizeText(encoded(pictureOf(lines, style), "png"), {}));
        EXPECT_GE(shareOfWords(words, found.join(u' ')), 0.85)
            << family.toStdString() << ' ' << size << (dark ? " dark: " : " light: ")
            << found.join(u'|').toStdString();
      }
    }
  }
}

TEST(TextRecognition, GivesTheBoxOfEachLineFromTheTop) {
  ConfinedTextRecognizer recognizer(helperProgram());
  QImage picture(600, 500, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setFont(QFont(u"DejaVu Sans"_s, 20));
  painter.drawText(40, 80, u"primera arriba"_s);
  painter.drawText(40, 420, u"segunda abajo"_s);
  painter.end();
  const auto outcome = recognizer.recognizeText(encoded(picture, "png"), {});
  ASSERT_TRUE(std::holds_alternative<QList<RecognizedLine>>(outcome)) << errorOf(outcome).toStdString();
  const auto lines = std::get<QList<RecognizedLine>>(outcome);
  ASSERT_EQ(lines.size(), 2);
  EXPECT_EQ(lines.at(0).text, u"primera arriba");
  EXPECT_NEAR(lines.at(0).box.center().y(), 72, 15);
  EXPECT_EQ(lines.at(1).text, u"segunda abajo");
  EXPECT_NEAR(lines.at(1).box.center().y(), 412, 15);
}

TEST(TextRecognition, ReadsBothOfTwoColumns) {
  ConfinedTextRecognizer recognizer(helperProgram());
  QImage picture(900, 300, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setFont(QFont(u"DejaVu Serif"_s, 16));
  const QStringList left{u"manzanas verdes"_s, u"peras maduras"_s, u"uvas negras"_s};
  const QStringList right{u"green window"_s, u"yellow garden"_s, u"purple street"_s};
  for (int i = 0; i < 3; ++i) {
    painter.drawText(40, 80 + 60 * i, left.at(i));
    painter.drawText(520, 80 + 60 * i, right.at(i));
  }
  painter.end();
  const QString found = textsOf(recognizer.recognizeText(encoded(picture, "png"), {})).join(u' ');
  EXPECT_GE(shareOfWords((left + right).join(u' ').split(u' '), found), 0.9) << found.toStdString();
}

TEST(TextRecognition, ReadsAPhotoThatWasTakenSideways) {
  ConfinedTextRecognizer recognizer(helperProgram());
  const QImage upright = pictureOf({u"documento escaneado"_s, u"segunda línea"_s},
                                   {.family = u"DejaVu Sans"_s, .pixelSize = 32});
  const QByteArray photo = turnedJpeg(upright.transformed(QTransform().rotate(-90)));
  EXPECT_EQ(textsOf(recognizer.recognizeText(photo, {})),
            (QStringList{u"documento escaneado"_s, u"segunda línea"_s}));
}

TEST(TextRecognition, AnImageWithoutTextHasNoLines) {
  ConfinedTextRecognizer recognizer(helperProgram());
  QImage plain(300, 200, QImage::Format_RGB32);
  plain.fill(QColor(0x88aacc));
  EXPECT_EQ(textsOf(recognizer.recognizeText(encoded(plain, "png"), {})), QStringList());
  EXPECT_EQ(textsOf(recognizer.recognizeText(encoded(noisePicture({300, 200}), "png"), {})), QStringList());
  EXPECT_EQ(errorOf(recognizer.recognizeText(encoded(plain, "png"), {})), QString());
}

TEST(TextRecognition, ReadsThroughTransparency) {
  ConfinedTextRecognizer recognizer(helperProgram());
  QImage picture = pictureOf({u"texto sobre cristal"_s}, kPlain).convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, y);
      picture.setPixel(x, y, qRgba(0, 0, 0, 255 - qGray(pixel)));
    }
  }
  EXPECT_EQ(textsOf(recognizer.recognizeText(encoded(picture, "png"), {})),
            QStringList{u"texto sobre cristal"_s});
}

TEST(TextRecognition, WhatIsNoImageIsAnError) {
  ConfinedTextRecognizer recognizer(helperProgram());
  EXPECT_EQ(errorOf(recognizer.recognizeText("nothing", {})), u"no es una imagen legible");
}

}  // namespace
}  // namespace nimbrel
