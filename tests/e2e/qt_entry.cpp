#include <QApplication>
#include <QLineEdit>
#include <cstdio>

/// A text field of Qt: prints what it holds when Return is pressed, and ends.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QLineEdit field;
  field.setWindowTitle(QStringLiteral("qt-entry"));
  QObject::connect(&field, &QLineEdit::returnPressed, &field, [&field] {
    std::puts(field.text().toUtf8().constData());
    QApplication::quit();
  });
  field.show();
  return QApplication::exec();
}
