#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMimeData>

/// Copies several forms of one thing at once, as editors and browsers do, and stays to serve them:
/// qt_copy TYPE=VALUE… or qt_copy image=FILE
int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  auto* const content = new QMimeData;
  const QStringList arguments = QApplication::arguments().mid(1);
  for (const QString& argument : arguments) {
    const qsizetype separator = argument.indexOf(u'=');
    const QString type = argument.left(separator);
    const QString value = argument.mid(separator + 1);
    if (type == u"image")
      content->setImageData(QImage(value));
    else
      content->setData(type, value.toUtf8());
  }
  QApplication::clipboard()->setMimeData(content);
  return QApplication::exec();
}
