#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

// Draws an SVG in a square of so many pixels: icon_painter DRAWING SIDE PICTURE.
int main(int argc, char** argv) {
  QTextStream errors(stderr);
  if (argc != 4) {
    errors << "icon_painter DRAWING SIDE PICTURE\n";
    return 2;
  }
  QSvgRenderer drawing(QFile::decodeName(argv[1]));
  const int side = QByteArray(argv[2]).toInt();
  if (!drawing.isValid() || side <= 0) {
    errors << argv[1] << ": no drawing, or no size\n";
    return 1;
  }
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  drawing.render(&painter);
  painter.end();
  return image.save(QFile::decodeName(argv[3]), "PNG") ? 0 : 1;
}
