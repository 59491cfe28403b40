#include "support/Pictures.h"

#include <QBuffer>
#include <QFontMetrics>
#include <QPainter>
#include <QRandomGenerator>
#include <algorithm>

namespace nimbrel::testing {

QImage pictureOf(const QStringList& lines, const TextStyle& style) {
  QFont font(style.family);
  font.setPixelSize(style.pixelSize);
  const QFontMetrics metrics(font);
  int width = 0;
  for (const QString& line : lines)
    width = std::max(width, metrics.horizontalAdvance(line));
  const int margin = style.pixelSize;
  const int step = metrics.height() * 5 / 4;
  QImage image(width + 2 * margin, step * static_cast<int>(lines.size()) + 2 * margin, QImage::Format_RGB32);
  image.fill(style.paper);
  QPainter painter(&image);
  painter.setFont(font);
  painter.setPen(style.ink);
  for (int i = 0; i < lines.size(); ++i)
    painter.drawText(margin, margin + i * step + metrics.ascent(), lines.at(i));
  return image;
}

QImage noisePicture(const QSize& size, quint32 seed) {
  QRandomGenerator random(seed);
  QImage image(size, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x)
      line[x] = random.generate() | 0xff000000U;
  }
  return image;
}

QImage screenshotPicture(const QSize& size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(QColor(0xf4f5f7));
  QPainter painter(&image);
  painter.fillRect(0, 0, size.width(), 48, QColor(0x2b2f36));
  painter.fillRect(0, 48, size.width() / 5, size.height(), QColor(0xe3e6ea));
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(15);
  painter.setFont(font);
  painter.setPen(QColor(0x22262c));
  for (int y = 80; y < size.height() - 20; y += 22)
    painter.drawText(
        size.width() / 5 + 24, y,
        QStringLiteral("%1  El historial guarda lo que copias; the quick brown fox %2").arg(y).arg(y * 7));
  return image;
}

QByteArray encoded(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

QByteArray turnedJpeg(const QImage& image) {
  const QByteArray exif = QByteArray("Exif\0\0", 6) + QByteArray("MM\0\x2a\0\0\0\x08", 8) +
                          QByteArray("\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0", 18);
  QByteArray segment("\xff\xe1", 2);
  const auto length = static_cast<quint16>(exif.size() + 2);
  segment += static_cast<char>(length >> 8U);
  segment += static_cast<char>(length & 0xffU);
  QByteArray jpeg = encoded(image, "jpeg");
  jpeg.insert(2, segment + exif);
  return jpeg;
}

double shareOfWords(const QStringList& expected, const QString& recognised) {
  QStringList found = recognised.simplified().split(u' ', Qt::SkipEmptyParts);
  qsizetype hits = 0;
  for (const QString& word : expected)
    hits += found.removeOne(word) ? 1 : 0;
  return expected.isEmpty() ? 1.0 : double(hits) / double(expected.size());
}

}  // namespace nimbrel::testing
