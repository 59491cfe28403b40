#pragma once

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>
#include <QStringList>

/// Pictures made for tests.
namespace nimbrel::testing {

struct TextStyle final {
  QString family;
  int pixelSize = 16;
  QColor ink = Qt::black;
  QColor paper = Qt::white;
};

/// Lines of text, one below the other.
[[nodiscard]] QImage pictureOf(const QStringList& lines, const TextStyle& style);

/// The same pixels every time, different for every seed, too irregular to compress well.
[[nodiscard]] QImage noisePicture(const QSize& size, quint32 seed = 1);

/// Pixels as no camera and every screen has them: large even areas, edges and some text.
[[nodiscard]] QImage screenshotPicture(const QSize& size);

[[nodiscard]] QByteArray encoded(const QImage& image, const char* format);

/// A JPEG with a camera's note that it was held sideways (EXIF 2.3, orientation 6: turn clockwise).
[[nodiscard]] QByteArray turnedJpeg(const QImage& image);

/// The share of the expected words that are among the recognised ones, from 0 to 1.
[[nodiscard]] double shareOfWords(const QStringList& expected, const QString& recognised);

}  // namespace nimbrel::testing
